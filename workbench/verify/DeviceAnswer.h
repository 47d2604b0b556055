#pragma once

#include <string>

#include "DeviceValue.h"
#include "PropertyServices.h"

namespace workbench {

// What a device answered for a property, as a value to compare.
DeviceReading ReadingOf(standard::ReadResult const& result, std::chrono::milliseconds elapsed);

// In words; empty if there is no value.
std::string WordsOf(standard::ReadResult const& result);

}  // namespace workbench
