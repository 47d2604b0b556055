#pragma once

#include "ObjectRecord.h"
#include "PointSupport.h"

namespace workbench {

// What a project can do with the present value of an object: what the driver can, and for a write also what
// the object is for (IsSettable). `whyNotWritten` has the reason of the two that applies.
PointSupport UseOf(ObjectRecord const& object);

}  // namespace workbench
