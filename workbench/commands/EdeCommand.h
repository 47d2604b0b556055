#pragma once

#include "Command.h"

namespace workbench {

// ede SOURCE: writes a point list in the format of the trade (docs/ede.md).
void AddEdeCommand(CLI::App& program, CommandBody& chosen);

}  // namespace workbench
