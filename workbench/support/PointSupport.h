#pragma once

#include <string>

#include "ObjectId.h"
#include "PropertyId.h"

namespace workbench {

// What the driver can do with a property of an object, by its own tables (docs/configure-a-block.md).
struct PointSupport {
    // A variable on it gets a value, if the device has the property.
    bool canRead = false;
    // A write through such a variable writes this property. Whether the device allows it is another question.
    bool canWrite = false;
    // The type in which the driver delivers the value, as in the field ElementType: "Float". Empty if it
    // cannot read it.
    std::string elementType;
    // Why not, in words; empty if it can.
    std::string whyNot;
    std::string whyNotWritten;
};

// Any object type and property, also those that have no name.
PointSupport SupportOf(standard::ObjectId const& object,
                       standard::PropertyId property = standard::PropertyId::Present_Value);

}  // namespace workbench
