#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "ObjectType.h"

namespace standard {

// Whether the datatype is one of the enumerations.
bool IsEnumeration(Datatype datatype);
// Whether the enumeration of protocol revision 14 has that number. Units have every number: vendors add
// theirs.
bool IsEnumerated(Datatype datatype, std::uint32_t number);
// The number of a name of protocol revision 14, such as "degrees-celsius", in an enumeration; of units, also
// of those that later revisions added.
std::optional<std::uint32_t> EnumeratedOfName(Datatype datatype, std::string_view name);
// The name of a number; also of those that later revisions added.
std::optional<std::string_view> NameOfEnumerated(Datatype datatype, std::uint32_t number);

}  // namespace standard
