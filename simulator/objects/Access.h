#pragma once

#include "ObjectType.h"
#include "Standard.h"

namespace simulator {

// When a property can be written.
enum class Access {
    ReadOnly,
    Writable,
    // While Out_Of_Service is true, as for a measured or computed Present_Value (clause 12.2.4).
    WhileOutOfService
};

// The default; a device file can allow more or less. A write to a Present_Value is a command if the object
// has a Priority_Array.
Access AccessOf(ObjectType const& type, PropertyId id);

// Whether values of that datatype can be written at all.
bool IsWritableDatatype(Datatype datatype);

}  // namespace simulator
