#pragma once

namespace workbench {

// The exit codes of the program. Scripts rely on these numbers.
enum ExitCode : int {
    ExitOk = 0,
    ExitFault = 1,   // a block was in fault at the end, with --fail-on-fault
    ExitUsage = 2,   // a mistake on the command line or in the project
    ExitAddIn = 3,   // the add-in cannot be loaded
    ExitFailure = 4  // something else failed, such as writing the capture file
};

}  // namespace workbench
