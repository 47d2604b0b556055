#pragma once

#include "ObjectRecord.h"
#include "PointSupport.h"

namespace workbench {

// What a project can do with the present value of an object: what the driver can, unless the device answers
// it with an error, and for a write also what the object is for (IsSettable). `whyNot` and `whyNotWritten`
// have the reason that applies.
PointSupport UseOf(ObjectRecord const& object);

}  // namespace workbench
