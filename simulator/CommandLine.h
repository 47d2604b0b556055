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

    // `arguments` are those after the program's name. Throws std::invalid_argument with the mistake as its
    // text.
    static CommandLine Parse(std::vector<std::string> const& arguments);
    static char const* Help();
};

}  // namespace simulator
