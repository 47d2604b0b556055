#pragma once

#include "ObjectType.h"
#include "Standard.h"
#include "TagReader.h"
#include "Value.h"

namespace simulator {

// The primitive values of write requests. All functions throw ServiceError: invalid-data-type for contents
// that do not fit the datatype of their tag; value-out-of-range for a value that the standard does not allow,
// such as month 15, or that the simulator cannot hold, such as an infinity or a number beyond 32 bits.

// The value with any datatype. Its contents are encoded again, in the fewest octets.
ValuePtr WrittenAny(Primitive const& primitive);
// The value for a property of a primitive datatype or an enumeration. A strict device requires the tag of the
// datatype. A lenient one converts numbers: it accepts a Boolean, Unsigned, Signed, Real, Double or
// Enumerated for any other of these if the number fits, and rounds it for whole numbers.
ValuePtr WrittenAs(Datatype datatype, Primitive const& primitive, bool isLenient);

// The contents of a Date and of a Time (clauses 20.2.12 and 20.2.13).
void CheckDate(Octets const& content);
void CheckTime(Octets const& content);

}  // namespace simulator
