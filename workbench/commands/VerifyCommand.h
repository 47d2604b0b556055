#pragma once

#include <string>

#include "Command.h"
#include "CommonOptions.h"

namespace workbench {

// Of the command verify.
struct VerifyOptions : ProjectOptions {
    bool isJson = false;
    std::string report;       // empty: none
    std::string title;        // of the report; empty: the project's path
    unsigned timeout = 3000;  // milliseconds
    unsigned retries = 1;
    unsigned long long rounds = 1;
};

void DefineVerify(CLI::App& command, VerifyOptions& options);

// Compares the points of a project with their devices, prints the result, writes the report and returns the
// exit code. Load the add-in first. Throws ProjectError, AddInError, and std::runtime_error for a file or a
// socket that cannot be used.
int VerifyProject(VerifyOptions const& options, Streams const& streams);

void AddVerifyCommand(CLI::App& program, CommandBody& chosen);

}  // namespace workbench
