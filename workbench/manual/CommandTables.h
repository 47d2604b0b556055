#pragma once

#include "Manual.h"

namespace workbench {

// The command line of the workbench as its own tables have it, from which --help is made too.
tools::ManualProgram ManualOfCommands();

}  // namespace workbench
