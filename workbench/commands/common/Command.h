#pragma once

#include <functional>

#include "Streams.h"

namespace CLI {
class App;
}

namespace workbench {

// What a command does once the command line has been read: returns the exit code. Throws ProjectError,
// AddInError, and other std::exceptions for what fails besides.
using CommandBody = std::function<int(Streams const&)>;

// Each command has a function of this form in a header of its own. It adds the command with its options to
// the program, and leaves in `chosen` what to do when the command line names it. `chosen` must outlive the
// program.
using AddCommand = void (*)(CLI::App& program, CommandBody& chosen);

}  // namespace workbench
