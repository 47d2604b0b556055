#pragma once

#include "EdeObject.h"

namespace workbench {

// Headings of ObjectRecord::listed for what the files Units and ObjTypes say of numbers that the standard has
// no name for: units and object types of a vendor.
constexpr char const* UnitNameHeading = "unit-text";
constexpr char const* TypeNameHeading = "object-type-text";

// Gives the object its unit: by the code, the name of the standard, a text of the file of units, or a symbol.
// An object whose type has no unit, or a unit that is not one of the standard, keeps the text; but "no units"
// says nothing of an object whose type has none.
void SetUnit(EdeRow const& row, CodeTexts const& units, ObjectRecord& object);
// The same for the text of a project: a name of the standard, "unit 300" for a code without one, or any text.
void SetUnit(std::string const& text, ObjectRecord& object);

// What the column unit-code of the object has: a code, or a text that has none.
std::string UnitCell(ObjectRecord const& object);

}  // namespace workbench
