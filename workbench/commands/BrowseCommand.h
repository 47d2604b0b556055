#pragma once

#include "Command.h"

namespace workbench {

// Shows the objects of devices, or the properties of an object.
void AddBrowseCommand(CLI::App& program, CommandBody& chosen);

}  // namespace workbench
