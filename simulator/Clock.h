#pragma once

#include "Moment.h"

namespace simulator {

// The source of time: the operating system in the program, a clock of the test in tests.
class Clock {
public:
    virtual ~Clock() = default;
    virtual Moment Now() const = 0;
};

}  // namespace simulator
