#include "RoundTrips.h"

#include <algorithm>

namespace workbench {

void RoundTrips::Add(long long duration) {
    latest[count % latest.size()] = duration;
    ++count;
    maximum = std::max(maximum, duration);
}

long long RoundTrips::Median() const {
    auto sorted = latest;
    std::size_t const kept = static_cast<std::size_t>(std::min<unsigned long long>(count, sorted.size()));
    if (kept == 0) {
        return 0;
    }
    std::sort(sorted.begin(), sorted.begin() + static_cast<std::ptrdiff_t>(kept));
    long long const upper = sorted[kept / 2];
    return kept % 2 == 1 ? upper : (sorted[kept / 2 - 1] + upper) / 2;
}

}  // namespace workbench
