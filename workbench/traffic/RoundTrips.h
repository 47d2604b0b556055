#pragma once

#include <array>
#include <cstddef>

namespace workbench {

// Figures of round trips in 100-nanosecond units. Takes a fixed amount of memory: the median is that of the
// latest 4096, the maximum that of all.
class RoundTrips {
public:
    void Add(long long duration);

    unsigned long long Count() const { return count; }
    long long Maximum() const { return maximum; }
    // The middle one of an odd count, the mean of the middle two of an even one; 0 without any.
    long long Median() const;

private:
    std::array<long long, 4096> latest{};
    unsigned long long count = 0;
    long long maximum = 0;
};

}  // namespace workbench
