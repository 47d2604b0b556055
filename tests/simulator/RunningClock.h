#pragma once

#include <chrono>

#include "Server.h"

namespace test {

// A clock that has moved on by half a second each time somebody looks at it.
class RunningClock : public simulator::Clock {
public:
    simulator::Moment now() const override {
        m_now.sinceStart += std::chrono::milliseconds(500);
        return m_now;
    }

private:
    mutable simulator::Moment m_now;
};

}  // namespace test
