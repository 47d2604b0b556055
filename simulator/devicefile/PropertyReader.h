#pragma once

#include <vector>

#include "ObjectType.h"
#include "Script.h"
#include "Standard.h"
#include "Value.h"

namespace simulator {

// The value of a property, or its elements, from the value in a device file. Throws Mistake.
std::vector<ValuePtr> ReadValues(PropertyRow const& row, ScriptValue const& value);

}  // namespace simulator
