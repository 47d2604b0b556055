#pragma once

#include <cstdint>
#include <vector>

#include "BrowseSettings.h"
#include "ObjectRecord.h"

namespace workbench {

// The properties of an object that are requested, without Object_List and what its identifier says already.

// Those of its type, or the usual ones of an object whose type has no table. Object_Name is the first.
std::vector<std::uint32_t> PropertiesOfType(std::uint16_t objectType, Detail detail);
// Those of its Property_List, and Object_Name, which is not in it (clause 12.1.1.4.2). At most 1000.
std::vector<std::uint32_t> PropertiesOfList(std::vector<standard::Datum> const& propertyList);

}  // namespace workbench
