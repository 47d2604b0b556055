#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Faults.h"

namespace simulator {

// In octets.
constexpr std::size_t LongestCommand = 1000;

// A device as commands know it.
struct CommandTarget {
    std::string name;
    Faults* faults;  // not null
};

struct CommandAnswer {
    bool isMistake = false;
    std::string text;  // lines, each with its end; empty for an empty command
};

// Carries out a line of the program's standard input:
//     fault NAME KIND [key=value ...]      clear NAME      faults      help
// NAME is a device's, in quotation marks if it has spaces, or * for all of them. What the line may be is
// decided by itself: nothing that it says makes this throw, and of a wrong line nothing is done.
CommandAnswer RunFaultCommand(std::string const& line, std::vector<CommandTarget> const& targets);

// What `help` answers.
std::string FaultHelp();

}  // namespace simulator
