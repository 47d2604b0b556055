#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "Command.h"
#include "CommonOptions.h"

namespace workbench {

// Of the command check.
struct CheckOptions {
    std::vector<std::string> projects;
    Params params;
    bool isJson = false;
    bool strict = false;  // warnings count as errors
};

void DefineCheck(CLI::App& command, CheckOptions& options);

// Prints all findings of the projects and returns the exit code. Throws std::runtime_error if the output
// cannot be written.
int CheckProjects(CheckOptions const& options, std::ostream& out, bool outIsTerminal);

void AddCheckCommand(CLI::App& program, CommandBody& chosen);

}  // namespace workbench
