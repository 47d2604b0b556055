#pragma once

#include "ObjectType.h"
#include "Standard.h"
#include "TagReader.h"
#include "Value.h"

namespace simulator {

// The primitive values of write requests. All throw ServiceError: invalid-data-type for contents that are not
// of their tag's datatype, value-out-of-range for what the simulator or the standard doesn't know (numbers
// beyond 32 bits, infinite ones, the 32nd of a month).

// The value as it is, whatever its datatype; its contents encoded again, in as few octets as hold them.
ValuePtr WrittenAny(Primitive const& primitive);
// The value for a property of a primitive datatype or an enumeration. Strictly, its tag is that of the
// datatype. A lenient device converts numbers: Boolean, Unsigned, Signed, Real, Double and Enumerated stand
// for one another if the number fits, rounded if it must be a whole one.
ValuePtr WrittenAs(Datatype datatype, Primitive const& primitive, bool isLenient);

// Contents of a Date and of a Time (clauses 20.2.12 and 20.2.13).
void CheckDate(Octets const& content);
void CheckTime(Octets const& content);

}  // namespace simulator
