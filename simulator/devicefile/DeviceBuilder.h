#pragma once

#include "Device.h"
#include "ObjectBuilder.h"

namespace simulator {

// The device of a device{...} table. Throws Mistake, with the device and the object in front and with the
// line of the object or else of the device.
Device BuildDevice(ScriptValue const& given, ObjectBuilder::Evaluate const& evaluate);

}  // namespace simulator
