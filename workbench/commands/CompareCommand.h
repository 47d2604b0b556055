#pragma once

#include "Command.h"

namespace workbench {

// compare FILE_EDE.csv SOURCE: the differences between a point list and a plant or a project (docs/ede.md).
void AddCompareCommand(CLI::App& program, CommandBody& chosen);

}  // namespace workbench
