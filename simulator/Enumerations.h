#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "ObjectType.h"

namespace simulator {

// Whether the datatype is one of the enumerations.
bool isEnumeration(Datatype datatype);
// The number of a name in an enumeration, names as in the standard: "degrees-celsius".
std::optional<std::uint32_t> enumeratedOfName(Datatype datatype, std::string_view name);

}  // namespace simulator
