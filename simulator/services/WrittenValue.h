#pragma once

#include <vector>

#include "ObjectType.h"
#include "OctetVector.h"
#include "Standard.h"
#include "Value.h"

namespace simulator {

// The value or values of a write request to a property of that datatype. `octets` must be whole tags. Throws
// ServiceError: invalid-data-type for another datatype, and as in WrittenPrimitive.h and WrittenSchedule.h,
// which also state what a lenient device accepts.
std::vector<ValuePtr> WrittenValues(Datatype datatype, Octets const& octets, bool isLenient);

}  // namespace simulator
