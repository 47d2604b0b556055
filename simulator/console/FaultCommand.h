#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Faults.h"

namespace simulator {

// The limit of a command line, in octets.
constexpr std::size_t LongestCommand = 1000;

// A device as commands name it.
struct CommandTarget {
    std::string name;
    Faults* faults;  // not null
};

struct CommandAnswer {
    bool isMistake = false;
    std::string text;  // lines, each with its line end; empty for an empty command
};

// Carries out a line of the program's standard input:
//     fault NAME KIND [key=value ...]      clear NAME      faults      help
// NAME is the name of a device, in quotation marks if it has spaces, or * for all devices. A wrong line
// changes nothing; the answer states the mistake. No line makes this throw.
CommandAnswer RunFaultCommand(std::string const& line, std::vector<CommandTarget> const& targets);

// The answer to `help`.
std::string FaultHelp();

}  // namespace simulator
