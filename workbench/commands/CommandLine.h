#pragma once

#include <iosfwd>

#include "Command.h"

namespace workbench {

// Adds all commands with their options, and what --help says of them; `chosen` as in Command.h.
void DefineProgram(CLI::App& program, CommandBody& chosen);

// Reads the command line and returns what is to be done. An empty function means that there is nothing to do:
// help, the version or a mistake has been written to out or err, and exitCode is the program's.
CommandBody ReadCommandLine(int argc, char const* const* argv, std::ostream& out, std::ostream& err,
                            int& exitCode);

}  // namespace workbench
