#pragma once

#include <cstdint>
#include <string>

namespace standard {

// The name of a BACnetPropertyIdentifier (clause 21), such as "present-value". A number without a name is
// "property 512".
std::string PropertyText(std::uint32_t property);

}  // namespace standard
