#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ObjectRecord.h"

namespace workbench {

// A line of the properties of one object.
struct PropertyLine {
    std::uint32_t property;
    std::string name;  // empty in the further lines of a property
    std::string text;
};

// All properties that were read, in the order of a reader's interest: what the object is and has first, then
// the others by their numbers; those that the object does not have are left out. The priority array has a
// line for each of its 16 levels, a schedule for each day or event.
std::vector<PropertyLine> PropertyLinesOf(ObjectRecord const& object);

}  // namespace workbench
