#pragma once

#include "CommandLine.h"
#include "RunCommand.h"

namespace workbench {

// Compares the points of a project with their devices, prints the result, writes the report and returns the
// exit code. Load the add-in first. Throws ProjectError, AddInError, and std::runtime_error for a file or a
// socket that cannot be used.
int VerifyProject(Options const& options, RunStreams const& streams);

}  // namespace workbench
