#pragma once

#include <string>

#include "EdeColumns.h"
#include "ObjectRecord.h"

namespace workbench {

// What an object has in a column of an EDE file, as text. Of the columns that identify it and of
// state-text-reference, only what a point list says. `device` is the Device object of its device.
std::string CellOf(ObjectRecord const& object, EdeColumn column, ObjectRecord const& device);

// The value as a point list has it: a number, or a text; empty for others.
std::string CellText(standard::Datum const& value);

}  // namespace workbench
