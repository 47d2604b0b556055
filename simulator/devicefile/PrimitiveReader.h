#pragma once

#include <string>
#include <vector>

#include "ObjectType.h"
#include "Script.h"
#include "Standard.h"
#include "Value.h"

namespace simulator {

// The functions of device files that make a value of a certain datatype: real(21.5), null(),
// object_identifier("analog_input", 1); and clock(), the date or the time of the wall clock.
std::vector<std::string> PrimitiveConstructors();

// A value of a primitive datatype, an enumeration, a BACnetDateTime or Any, fixed or moving. For Any, a
// number is a Real and a text a CharacterString. Throws Mistake.
ValuePtr ReadPrimitive(Datatype datatype, ScriptValue const& value);

// The number of an enumerated value, which is given by its name or by its number.
std::uint32_t ReadEnumerated(Datatype datatype, ScriptValue const& value);

// The tags of a date and a time such as "2024-03-15 08:00:00". "*" is an unspecified date and time.
Octets ReadDateTime(ScriptValue const& value);

}  // namespace simulator
