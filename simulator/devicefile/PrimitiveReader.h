#pragma once

#include <string>
#include <vector>

#include "ObjectType.h"
#include "Script.h"
#include "Standard.h"
#include "Value.h"

namespace simulator {

// The functions of device files that say which datatype a value of a schedule has: real(21.5), null(),
// object_identifier("analog_input", 1); and clock(), which is the wall clock's date or time.
std::vector<std::string> PrimitiveConstructors();

// A value of a primitive datatype, an enumeration, a BACnetDateTime or Any, fixed or moving. For Any a
// plain number is a Real, a text a CharacterString. Throws Mistake.
ValuePtr ReadPrimitive(Datatype datatype, ScriptValue const& value);

// The number of a name or of a number; of the enumeration.
std::uint32_t ReadEnumerated(Datatype datatype, ScriptValue const& value);

// A date and a time as "2024-03-15 08:00:00", tagged. Any of both for "*".
Octets ReadDateTime(ScriptValue const& value);

}  // namespace simulator
