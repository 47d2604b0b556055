#pragma once

#include <string>

#include "ObjectRecord.h"

namespace workbench {

// The fields of an object in a device file of the simulator, one a line with a comma, after `indent` blanks:
// its name, its properties, and that it has no others.
std::string ObjectFields(ObjectRecord const& object, std::size_t indent);

// Whether the fields lack the Relinquish_Default of the object: the simulator has one only with commands, and
// those of this object are not of the datatype of its present value, are not 16, or could not be read.
bool LacksDefault(ObjectRecord const& object);

// The same for a Device object, without what the simulator has itself: the list of its objects, the time, and
// the addresses of other devices.
std::string DeviceFields(ObjectRecord const& device, std::size_t indent);

// "analog_input" or, of a type without a table, "object": what makes the object.
std::string ConstructorOf(standard::ObjectId const& object);

}  // namespace workbench
