#pragma once

#include <cstdint>
#include <string>

#include "ObjectId.h"
#include "PropertyReference.h"

namespace standard {

// The name of a BACnetObjectType (clause 21), such as "analog-input". A number without a name is "object type
// 128".
std::string ObjectTypeText(std::uint16_t type);

// "analog-input 1"
std::string ObjectText(ObjectId const& object);
// "analog-input 1 present-value", "device 7 object-list[0]"
std::string ReferenceText(PropertyReference const& reference);

}  // namespace standard
