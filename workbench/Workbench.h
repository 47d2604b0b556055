#pragma once

#include <iosfwd>

namespace workbench {

// The whole program: parses the command line, runs the command and returns the exit code (ExitCode.h).
// Results go to out, mistakes and the driver's log to err. A terminal is used only through the process's own
// standard streams.
int Main(int argc, char const* const* argv, std::ostream& out, std::ostream& err);

}  // namespace workbench
