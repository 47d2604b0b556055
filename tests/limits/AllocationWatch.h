#pragma once

#include "Heap.h"

namespace test {

// What operator new gives out from the making of the watch on.
class AllocationWatch {
public:
    AllocationWatch();

    HeapTotals Made() const;
    // Octets given out now beyond those at the beginning; the most that there were at any time.
    long long Growth() const;
    long long Peak() const;

private:
    HeapTotals before;
    long long octetsBefore;
};

// How often as many allocations, in pieces or in octets, whichever is more.
double Ratio(HeapTotals const& larger, HeapTotals const& smaller);

}  // namespace test
