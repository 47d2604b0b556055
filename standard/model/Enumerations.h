#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "ObjectType.h"

namespace standard {

// Whether the datatype is one of the enumerations.
bool IsEnumeration(Datatype datatype);
// Whether the enumeration has that number; of units, whose names are not all known here, any will do.
bool IsEnumerated(Datatype datatype, std::uint32_t number);
// The number of a name in an enumeration, names as in the standard: "degrees-celsius".
std::optional<std::uint32_t> EnumeratedOfName(Datatype datatype, std::string_view name);

}  // namespace standard
