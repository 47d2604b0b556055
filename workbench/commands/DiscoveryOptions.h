#pragma once

#include "Command.h"
#include "PlantDiscovery.h"

namespace workbench {

// --interface, --range, --bbmd and --port: where and for which devices Who-Is asks. Mistakes throw an
// exception of CLI11.
void AddDiscoveryOptions(CLI::App& command, DiscoverySettings& settings);

}  // namespace workbench
