#pragma once

#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace workbench {

enum class Command { Run, Check, Names };

enum class OutputFormat { Auto, Table, Lines, Json };

struct Options {
    Command What = Command::Run;
    std::string Project;
    std::string AddIn;  // empty: the one beside the program
    std::map<std::string, std::string> Params;
    std::vector<std::string> Sets;  // "Block.Variable=value", in order
    OutputFormat Format = OutputFormat::Auto;
    unsigned long long Cycles = 0;  // 0: no end
    bool Trace = false;
    bool FailOnFault = false;
    std::string CaptureFile;  // empty: none
    std::optional<bool> Summary;
};

// Reads the command line. Nothing when there is nothing to do: help, the version or a mistake has been
// written to out or err then, and exitCode says with what the program ends.
std::optional<Options> ParseCommandLine(int argc, char const* const* argv, std::ostream& out,
                                        std::ostream& err, int& exitCode);

}  // namespace workbench
