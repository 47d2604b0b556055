#pragma once

#include <cstdint>
#include <optional>

#include "ObjectType.h"

namespace standard {

// The datatype of a property of an object type. For object types without a table, that of a property which
// has the same datatype everywhere, such as Units.
std::optional<Datatype> DatatypeOf(std::uint16_t objectType, std::uint32_t property);

}  // namespace standard
