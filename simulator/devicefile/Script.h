#pragma once

#include "ScriptValue.h"

// Names of tools/ without their namespace.
namespace simulator {
using tools::ScriptField;
using tools::ScriptValue;
}  // namespace simulator
