#pragma once

#include <memory>

#include "Script.h"
#include "Signal.h"

namespace simulator {

// The functions of device files that make moving values: ramp{from, to, period}, curve{mean, amplitude,
// period, peak}, toggle{period}, counter{start, rate}, steps{values, period}.
std::vector<std::string> SignalConstructors();

// The signal of a value of a device file, or null if the value does not move. Throws Mistake.
std::shared_ptr<Signal const> ReadSignal(ScriptValue const& value);

}  // namespace simulator
