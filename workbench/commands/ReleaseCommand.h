#pragma once

#include "Command.h"

namespace workbench {

// Takes back what was commanded at a priority: the only command that writes by itself.
void AddReleaseCommand(CLI::App& program, CommandBody& chosen);

}  // namespace workbench
