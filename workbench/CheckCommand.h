#pragma once

#include <ostream>

#include "CommandLine.h"

namespace workbench {

// Prints all findings of the projects and returns the exit code. Throws std::runtime_error if the output
// cannot be written.
int CheckProjects(Options const& options, std::ostream& out, bool outIsTerminal);

}  // namespace workbench
