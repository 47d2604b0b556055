#pragma once

#include "Device.h"
#include "ObjectBuilder.h"

namespace simulator {

// The device of a device{...} table. Throws Mistake, whose text begins with the device and the object. Its
// line is that of the object, or of the device if the object has none.
Device BuildDevice(ScriptValue const& given, ObjectBuilder::Evaluate const& evaluate);

}  // namespace simulator
