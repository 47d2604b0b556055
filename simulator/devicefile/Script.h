#pragma once

#include "ScriptValue.h"

// The simulator calls the values of scripts by the names of tools/.
namespace simulator {
using tools::ScriptField;
using tools::ScriptValue;
}  // namespace simulator
