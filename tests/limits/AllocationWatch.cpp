#include "AllocationWatch.h"

#include <algorithm>

namespace test {

AllocationWatch::AllocationWatch() : before(HeapTotalsSoFar()), octetsBefore(HeapOctets()) {
    ForgetHeapPeak();
}

HeapTotals AllocationWatch::Made() const {
    HeapTotals const now = HeapTotalsSoFar();
    return {now.allocations - before.allocations, now.octets - before.octets};
}
long long AllocationWatch::Growth() const {
    return HeapOctets() - octetsBefore;
}
long long AllocationWatch::Peak() const {
    return HeapPeak() - octetsBefore;
}

double Ratio(HeapTotals const& larger, HeapTotals const& smaller) {
    auto const ratio = [](long long more, long long less) {
        return static_cast<double>(more) / static_cast<double>(std::max(less, 1LL));
    };
    return std::max(ratio(larger.allocations, smaller.allocations), ratio(larger.octets, smaller.octets));
}

}  // namespace test
