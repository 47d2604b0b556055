#pragma once

#include <iosfwd>

#include "CommandLine.h"

namespace workbench {

// What a run needs of the process around it.
struct RunStreams {
    std::ostream& out;
    std::ostream& err;
    bool outIsTerminal;  // Out is the process's standard output, and that a terminal
    bool errIsTerminal;  // the log would tear a table
    int in = -1;         // the handle of standard input, -1 for none
};

// Runs a project until its cycles are done or a signal asks for the end. The add-in has been loaded. Exit
// code. Throws ProjectError, AddInError, and std::runtime_error for a file that cannot be written.
int RunProject(Options const& options, RunStreams const& streams);

// Loads the project and tells how much there is in it. Exit code; ProjectError and AddInError.
int CheckProject(Options const& options, RunStreams const& streams);

}  // namespace workbench
