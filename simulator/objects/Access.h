#pragma once

#include "ObjectType.h"
#include "Standard.h"

namespace simulator {

// Who may write a property.
enum class Access {
    ReadOnly,
    Writable,
    // While Out_Of_Service is true; so it is with what an object measures or works out (clause 12.2.4).
    WhileOutOfService
};

// The default of the simulator's devices; their file can allow more or less. A Present_Value that may be
// written is commanded if the object has a Priority_Array.
Access AccessOf(ObjectType const& type, PropertyId id);

// Whether values of that datatype can be written at all.
bool IsWritableDatatype(Datatype datatype);

}  // namespace simulator
