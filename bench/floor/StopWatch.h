#pragma once

#include <chrono>
#include <cstddef>
#include <ratio>

namespace bench {

// Runs from its construction.
class StopWatch {
public:
    double MicrosecondsPer(std::size_t count) const {
        std::chrono::duration<double, std::micro> const elapsed = Clock::now() - begin;
        return elapsed.count() / static_cast<double>(count);
    }

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point begin = Clock::now();
};

}  // namespace bench
