#pragma once

#include "Clock.h"

namespace simulator {

// The clocks of the operating system. The time since the start counts from the construction.
class SystemClock : public Clock {
public:
    Moment Now() const override;

private:
    std::chrono::steady_clock::time_point const start = std::chrono::steady_clock::now();
};

}  // namespace simulator
