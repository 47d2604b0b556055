#pragma once

#include "Heap.h"

namespace test {

// Allocations by operator new since the construction of the watch.
class AllocationWatch {
public:
    AllocationWatch();

    HeapTotals Made() const;
    // Octets allocated now beyond those at the beginning; their maximum at any time.
    long long Growth() const;
    long long Peak() const;

private:
    HeapTotals before;
    long long octetsBefore;
};

// The ratio of the allocations, by number or by octets, whichever is larger.
double Ratio(HeapTotals const& larger, HeapTotals const& smaller);

}  // namespace test
