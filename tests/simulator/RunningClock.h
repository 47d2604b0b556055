#pragma once

#include <chrono>

#include "Server.h"

namespace test {

// A clock that advances by half a second at each reading.
class RunningClock : public simulator::Clock {
public:
    simulator::Moment Now() const override {
        now.sinceStart += std::chrono::milliseconds(500);
        return now;
    }

private:
    mutable simulator::Moment now;
};

}  // namespace test
