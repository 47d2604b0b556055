#pragma once

#include <vector>

#include "Fault.h"
#include "Script.h"

namespace simulator {

// The fault of fault{"truncate", octet = 9, times = 1}, which a command's words are put into as well. Throws
// Mistake with the fault's name and the field in front, and the line.
Fault ReadFault(ScriptValue const& given);

// The names of the fields that this kind has and not every one has.
std::vector<std::string> FieldsOf(FaultRow const& row);

// The list of a device's faults; none if it is not given. At most Faults::Most.
std::vector<Fault> ReadFaults(ScriptValue const& given);

}  // namespace simulator
