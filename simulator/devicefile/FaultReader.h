#pragma once

#include <vector>

#include "Fault.h"
#include "Script.h"

namespace simulator {

// The fault of fault{"truncate", octet = 9, times = 1}. Commands pass their words in the same form. Throws
// Mistake with the line; its text begins with the name of the fault and the field.
Fault ReadFault(ScriptValue const& given);

// The names of the fields that this kind has and not every other kind has.
std::vector<std::string> FieldsOf(FaultRow const& row);

// The list of the faults of a device, at most Faults::Most; without a list it is empty.
std::vector<Fault> ReadFaults(ScriptValue const& given);

}  // namespace simulator
