#pragma once

#include "Command.h"

namespace workbench {

// Lists the object types and properties that a project can name.
void AddNamesCommand(CLI::App& program, CommandBody& chosen);

}  // namespace workbench
