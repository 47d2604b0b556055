#pragma once

#include "Command.h"

namespace workbench {

// Writes what a run has recorded as CSV or JSON lines.
void AddExportCommand(CLI::App& program, CommandBody& chosen);

}  // namespace workbench
