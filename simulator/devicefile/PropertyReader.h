#pragma once

#include <vector>

#include "ObjectType.h"
#include "Script.h"
#include "Standard.h"
#include "Value.h"

namespace simulator {

// The value of a property, or its elements, as a device file gives it for that row. Throws Mistake.
std::vector<ValuePtr> ReadValues(PropertyRow const& row, ScriptValue const& value);

}  // namespace simulator
