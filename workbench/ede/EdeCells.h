#pragma once

#include <string>
#include <vector>

#include "EdeColumns.h"
#include "ObjectRecord.h"

namespace workbench {

// What an object has in a column of an EDE file, as text. Of the columns that identify it and of
// state-text-reference, only what a point list says. `device` is the Device object of its device.
std::string CellOf(ObjectRecord const& object, EdeColumn column, ObjectRecord const& device);

// The text as a list has it: valid UTF-8, with blanks in place of control characters.
std::string PlainText(std::string const& text);

// The texts of the states as a list has them: plain, and without empty ones at the end.
std::vector<std::string> PlainStateTexts(ObjectRecord const& object);

// The value as a point list has it: a number, or a text; empty for others.
std::string CellText(standard::Datum const& value);

}  // namespace workbench
