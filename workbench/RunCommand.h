#pragma once

#include <iosfwd>

#include "CommandLine.h"

namespace workbench {

// The streams of the process, as a run needs them.
struct RunStreams {
    std::ostream& out;
    std::ostream& err;
    bool outIsTerminal;  // out is standard output and a terminal
    bool errIsTerminal;  // err is standard error and a terminal
    int in = -1;         // the file descriptor of standard input, -1 for none
};

// Runs a project until its cycles are done or a signal ends it, and returns the exit code. Load the add-in
// first. Throws ProjectError, AddInError, and std::runtime_error for a file that cannot be written.
int RunProject(Options const& options, RunStreams const& streams);

}  // namespace workbench
