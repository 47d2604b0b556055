#pragma once

#include <chrono>

#include "Server.h"

namespace test {

// A clock that has moved on by half a second each time somebody looks at it.
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
