#pragma once

#include <iosfwd>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "LogBuffer.h"
#include "RunFigures.h"

namespace workbench {

enum class Command { Run, Check, Verify, Names };

enum class OutputFormat { Auto, Table, Lines, Json };

// Of the command verify.
struct VerifyOptions {
    bool isJson = false;
    std::string report;       // empty: none
    std::string title;        // of the report; empty: the project's path
    unsigned timeout = 3000;  // milliseconds
    unsigned retries = 1;
    unsigned long long rounds = 1;
};

struct Options {
    Command what = Command::Run;
    std::string project;                // of run and verify
    std::vector<std::string> projects;  // of check
    std::string addIn;                  // empty: the one beside the program
    std::map<std::string, std::string> params;
    std::vector<std::string> sets;  // "Block.Variable=value", in order
    OutputFormat format = OutputFormat::Auto;
    unsigned long long cycles = 0;  // 0: no limit
    bool trace = false;
    std::set<Trouble> failOn;  // each makes the exit code 1
    bool standby = false;
    LogFormat logFormat = LogFormat::Text;
    bool strict = false;      // warnings count as errors
    std::string captureFile;  // empty: none
    std::optional<bool> summary;
    VerifyOptions verify;
};

// Reads the command line. Without a value there is nothing to do: help, the version or a mistake has been
// written to out or err, and exitCode is the program's.
std::optional<Options> ParseCommandLine(int argc, char const* const* argv, std::ostream& out,
                                        std::ostream& err, int& exitCode);

}  // namespace workbench
