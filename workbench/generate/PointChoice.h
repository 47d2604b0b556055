#pragma once

#include <string>

#include "DeviceRecord.h"
#include "PointSupport.h"

namespace workbench {

// The variable that a project has for an object.
struct PointChoice {
    // Present_Value, or Average_Value of an Averaging.
    standard::PropertyId property = standard::PropertyId::Present_Value;
    PointSupport support;
    // Why the project does not read the object; empty if it does.
    std::string reason;
    // The driver can read it, but not each of its values correctly: someone who knows the values may want it.
    bool isReadable = true;
};

// `isFromDevice`: the object's properties are what its device answered, so that a missing one was not read.
// Points of a list have no values.
PointChoice ChoosePoint(ObjectRecord const& object, bool isFromDevice);

// Why the driver cannot poll the device at all; empty if it can.
std::string WhyNotPolled(DeviceRecord const& device);

}  // namespace workbench
