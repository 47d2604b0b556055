#pragma once

#include <iosfwd>

namespace workbench {

// The whole program: parses the command line, does what it says and gives the exit code (ExitCode.h). Results
// go to out, mistakes and the driver's log to err; a terminal is used only when the process's own streams are
// one.
int Main(int argc, char const* const* argv, std::ostream& out, std::ostream& err);

}  // namespace workbench
