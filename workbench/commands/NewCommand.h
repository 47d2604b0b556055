#pragma once

#include "Command.h"

namespace workbench {

// new: a project, and device files of the simulator, from what devices answer or from a point list.
void AddNewCommand(CLI::App& program, CommandBody& chosen);

}  // namespace workbench
