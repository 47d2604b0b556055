#pragma once

#include <optional>
#include <string>

#include "ObjectTypeEnum.h"
#include "PropertyIdentifierEnum.h"
#include "PropertyTypeEnum.h"

namespace workbench {

// The driver's own tables and functions for one property of an object type. The numbers are BACnet's; those
// that the driver does not know are allowed.

// Whether its codes for projects include the object type, or the property.
bool HasCode(ObjectTypeEnum objectType);
bool HasCode(PropertyIdentifierEnum property);

// The type as which the driver reads a property. Without a value it drops the whole answer.
std::optional<PropertyTypeEnum> DecodedAs(ObjectTypeEnum objectType, PropertyIdentifierEnum property);

// The property that the request of a poll has for this one.
PropertyIdentifierEnum SentAs(ObjectTypeEnum objectType, PropertyIdentifierEnum property);

// What becomes of a write through a variable on the property.
struct DriverWrite {
    std::string refusal;  // the driver's text if it never writes; empty otherwise
    PropertyIdentifierEnum property{};
};
DriverWrite WriteOf(ObjectTypeEnum objectType, PropertyIdentifierEnum property);

}  // namespace workbench
