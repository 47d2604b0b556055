#pragma once

#include <vector>

#include "ObjectType.h"
#include "OctetVector.h"
#include "Standard.h"
#include "Value.h"

namespace simulator {

// The value or values of a datatype that a write request carries; `octets` holds whole tags. Throws
// ServiceError: invalid-data-type if they are not of that datatype, and as in WrittenPrimitive.h and
// WrittenSchedule.h, which state what else a lenient device takes.
std::vector<ValuePtr> WrittenValues(Datatype datatype, Octets const& octets, bool isLenient);

}  // namespace simulator
