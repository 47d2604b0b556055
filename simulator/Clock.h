#pragma once

#include "Moment.h"

namespace simulator {

// The source of time: the operating system in the program, a clock that stands until it is set in tests.
class Clock {
public:
    virtual ~Clock() = default;
    virtual Moment Now() const = 0;
};

}  // namespace simulator
