#pragma once

#include <chrono>

namespace simulator {

// One instant as the simulator sees it.
struct Moment {
    // Since the simulator started; never runs backwards. Timers and moving values run on it.
    std::chrono::milliseconds sinceStart{0};
    // The wall clock: since 1 January 1970 00:00 of local time.
    std::chrono::milliseconds local{0};
};

}  // namespace simulator
