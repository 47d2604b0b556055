#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Datum.h"

namespace workbench {

// References of objects to properties of others (clause 21: BACnetObjectPropertyReference,
// BACnetDeviceObjectPropertyReference, BACnetSetpointReference), several with ", " between them:
// "analog-value 1 present-value", "analog-value 1 priority-array[8] of device 7". Nothing for values of
// another structure and for none at all.
std::optional<std::string> ReferenceWords(std::vector<standard::Datum> const& values);

}  // namespace workbench
