#pragma once

#include <string>
#include <vector>

#include "ObjectType.h"
#include "Script.h"
#include "Standard.h"
#include "Value.h"

namespace simulator {

// Values by their octets, for properties whose datatype has no table here and for values that the datatype of
// a property does not have:
//     tagged(2, "0A")              an application tag with its contents octets
//     context(1, "0A")             a primitive context tag
//     constructed(0, VALUE, ...)   an opening tag, values of any datatype, its closing tag
//     sequence(VALUE, ...)         several values that are one element
// and array{VALUE, ...}, the elements of an array.
std::vector<std::string> RawConstructors();

// The value that one of the first four functions made, or null for any other value. Throws Mistake.
ValuePtr ReadRaw(ScriptValue const& value);

// The values of a property without a table: one value, array{...}, or a plain table for a list. Throws
// Mistake.
struct FreeValues {
    Shape shape;
    std::vector<ValuePtr> values;
};
FreeValues ReadFreeValues(ScriptValue const& value);

}  // namespace simulator
