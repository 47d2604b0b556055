#pragma once

#include <cstddef>

namespace test {

// What operator new has given out in this process: the program replaces it by one that counts.
struct Allocations {
    std::size_t calls = 0;
    std::size_t octets = 0;  // of all calls together
};

Allocations AllocationsSoFar();
// Octets that are given out now.
std::size_t LiveOctets();

// Measures from its making on.
class AllocationWatch {
public:
    AllocationWatch();

    Allocations Made() const;
    // Octets given out now beyond those at the beginning; the most that there were at any time.
    long long Growth() const;
    long long Peak() const;

private:
    Allocations before;
    std::size_t liveBefore;
};

// How often as many allocations, in calls or in octets, whichever is more.
double Ratio(Allocations const& larger, Allocations const& smaller);

}  // namespace test
