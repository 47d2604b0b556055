#pragma once

namespace test {

// The octets that operator new has allocated and not freed, as requested, in the whole program with all
// threads and the host's libraries. Linking Heap.cpp replaces operator new and delete of the program.
long long HeapOctets();
// The number of these blocks.
long long HeapBlocks();

// The maximum of HeapOctets() since the last ForgetHeapPeak().
long long HeapPeak();
void ForgetHeapPeak();

// All allocations since the program began, freed or not.
struct HeapTotals {
    long long allocations = 0;
    long long octets = 0;
};
HeapTotals HeapTotalsSoFar();

// From now on only the allocation with this number, counted from 1, fails. 0: none fails.
void FailAllocation(long long number);
// The allocation with this number and all later ones fail, until FailAllocation is called.
void FailAllocationsFrom(long long number);
// Whether the allocation with the number has failed.
bool HasFailedAllocation();

}  // namespace test
