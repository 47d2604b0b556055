#pragma once

#include "Moment.h"

namespace simulator {

// Where the time comes from: the operating system in the program, a hand that turns it in tests.
class Clock {
public:
    virtual ~Clock() = default;
    virtual Moment Now() const = 0;
};

}  // namespace simulator
