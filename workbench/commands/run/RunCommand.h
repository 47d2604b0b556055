#pragma once

#include "Command.h"
#include "RunOptions.h"

namespace workbench {

// Runs a project until its cycles are done or a signal ends it, and returns the exit code. Load the add-in
// first. Throws ProjectError, AddInError, and std::runtime_error for a file that cannot be written.
int RunProject(RunOptions const& options, Streams const& streams);

void AddRunCommand(CLI::App& program, CommandBody& chosen);

}  // namespace workbench
