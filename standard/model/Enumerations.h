#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "ObjectType.h"

namespace standard {

// Whether the datatype is one of the enumerations.
bool IsEnumeration(Datatype datatype);
// Whether the enumeration has that number. Units have every number, since not all of their names are here.
bool IsEnumerated(Datatype datatype, std::uint32_t number);
// The number of a name of the standard, such as "degrees-celsius", in an enumeration.
std::optional<std::uint32_t> EnumeratedOfName(Datatype datatype, std::string_view name);

}  // namespace standard
