#pragma once

#include "Command.h"

namespace workbench {

// Finds the devices of a network.
void AddDiscoverCommand(CLI::App& program, CommandBody& chosen);

}  // namespace workbench
