#pragma once

#include "Clock.h"

namespace simulator {

// The operating system's clocks; its start is the moment at which it was made.
class SystemClock : public Clock {
public:
    Moment Now() const override;

private:
    std::chrono::steady_clock::time_point const start = std::chrono::steady_clock::now();
};

}  // namespace simulator
