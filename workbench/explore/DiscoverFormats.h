#pragma once

#include <string>

#include "PlantDiscovery.h"
#include "TextStyle.h"

namespace workbench {

// The devices that were found, in the three forms of the command discover.

// A table with what is wrong below the row of a device, then the routers and the notes.
std::string DiscoverText(DiscoveredPlant const& plant, TextStyle const& style);
// A heading, then a line for each device with tabs between the columns.
std::string DiscoverLines(DiscoveredPlant const& plant);
// {"kind":"device",...}, {"kind":"router",...} and {"kind":"note",...}, an object a line.
std::string DiscoverJson(DiscoveredPlant const& plant);

// Whether something is wrong with a device.
bool HasMarks(DiscoveredPlant const& plant);

}  // namespace workbench
