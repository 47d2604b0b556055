#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

// The content of the command line.
struct CommandLine {
    std::vector<std::string> deviceFiles;  // at least one
    std::uint32_t devices = 1;             // as many of the one in the files
    std::uint32_t bindAddress = 0x7F000001;
    std::uint16_t port = 47808;
    bool isVerbose = false;
    std::optional<std::chrono::milliseconds> duration;
    bool exitsWithStdin = false;
    bool wantsHelp = false;
    bool wantsVersion = false;

    // An option, for the parser, --help and the manual.
    struct Option {
        char const* name;
        char const* value;  // what follows it, such as "N"; null: nothing
        char const* text;
        void (*take)(CommandLine& line, std::string const& value);
    };
    static std::vector<Option> const& Options();
    static char const* Brief();
    // What the device files are, and what --help says below the options.
    static char const* Files();
    static char const* Notes();

    // `arguments` are those after the program's name. Throws std::invalid_argument with the mistake as its
    // text.
    static CommandLine Parse(std::vector<std::string> const& arguments);
    static std::string Help();
};

}  // namespace simulator
