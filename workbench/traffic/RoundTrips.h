#pragma once

#include <array>
#include <cstddef>

namespace workbench {

// Statistics of round trips in 100-nanosecond units, in constant memory: the median is that of the latest
// 4096, the maximum that of all.
class RoundTrips {
public:
    void Add(long long duration);

    unsigned long long Count() const { return count; }
    long long Maximum() const { return maximum; }
    // The middle of an odd count, the mean of the middle two of an even count; 0 for none.
    long long Median() const;

private:
    std::array<long long, 4096> latest{};
    unsigned long long count = 0;
    long long maximum = 0;
};

}  // namespace workbench
