#pragma once

#include <chrono>

namespace simulator {

// An instant on the two clocks of the simulator.
struct Moment {
    // The time since the start of the simulator. It never goes back. Timers and moving values use it.
    std::chrono::milliseconds sinceStart{0};
    // The wall clock: since 1 January 1970 00:00 of local time.
    std::chrono::milliseconds local{0};
};

}  // namespace simulator
