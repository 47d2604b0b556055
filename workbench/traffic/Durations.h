#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

namespace workbench {

// Statistics of durations in 100-nanosecond units, in constant memory: the median is that of the latest Kept,
// the maximum that of all.
template <std::size_t Kept>
class Durations {
public:
    void Add(long long duration) {
        latest[count % Kept] = duration;
        last = duration;
        ++count;
        maximum = std::max(maximum, duration);
    }

    unsigned long long Count() const { return count; }
    long long Last() const { return last; }
    long long Maximum() const { return maximum; }
    // The middle of an odd count, the mean of the middle two of an even count; 0 for none.
    long long Median() const {
        auto sorted = latest;
        auto const kept = static_cast<std::ptrdiff_t>(std::min<unsigned long long>(count, Kept));
        if (kept == 0) {
            return 0;
        }
        auto const middle = sorted.begin() + kept / 2;
        std::nth_element(sorted.begin(), middle, sorted.begin() + kept);
        return kept % 2 == 1 ? *middle : (*std::max_element(sorted.begin(), middle) + *middle) / 2;
    }

private:
    std::array<long long, Kept> latest{};
    unsigned long long count = 0;
    long long last = 0;
    long long maximum = 0;
};

using RoundTrips = Durations<4096>;

}  // namespace workbench
