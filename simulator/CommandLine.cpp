#include "CommandLine.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <stdexcept>

#include "Printable.h"

namespace simulator {

namespace {

constexpr char NotesText[] =
    R"(Commands on standard input make devices answer wrongly while they run:

  fault NAME KIND [key=value ...]   such as: fault AHU-1 silence duration=10
  clear NAME                        end the faults of a device; * stands for all
  faults                            list the faults
  help                              list the kinds and their keys

For each device one line is printed as soon as it answers: ready NAME ADDRESS:PORT

Examples:
  bacnet-simulator examples/devices/air-handling-unit.lua
  bacnet-simulator chiller.lua boiler.lua --bind 192.168.1.20 --verbose
  bacnet-simulator room.lua --devices 1000 --duration 600

Exit codes:
  0  ended as asked, also by SIGINT and SIGTERM
  1  wrong command line
  2  mistake in the device file
  3  the socket cannot be opened
)";

std::uint32_t ReadAddress(std::string const& text) {
    in_addr parsed{};
    if (inet_pton(AF_INET, text.c_str(), &parsed) != 1) {
        throw std::invalid_argument("--bind: " + tools::Quoted(text) + " is not an IPv4 address");
    }
    return ntohl(parsed.s_addr);
}

std::uint16_t ReadPort(std::string const& text) {
    bool const isNumber =
        !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == std::string::npos;
    unsigned long const value = isNumber ? std::stoul(text) : 65536;
    if (value > 65535) {
        throw std::invalid_argument("--port: " + tools::Quoted(text) + " is not a port from 0 to 65535");
    }
    return static_cast<std::uint16_t>(value);
}

std::uint32_t ReadCount(std::string const& text) {
    constexpr unsigned long most = 10000;
    bool const isNumber =
        !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == std::string::npos;
    unsigned long const value = isNumber ? std::stoul(text) : 0;
    if (value == 0 || value > most) {
        throw std::invalid_argument("--devices: " + tools::Quoted(text) + " is not a number from 1 to 10000");
    }
    return static_cast<std::uint32_t>(value);
}

std::chrono::milliseconds ReadSeconds(std::string const& text) {
    constexpr double longest = 1e9;
    std::size_t end = 0;
    double value = -1;
    try {
        value = std::stod(text, &end);
    } catch (std::exception const&) {
    }
    if (end != text.size() || !(value >= 0 && value <= longest)) {
        throw std::invalid_argument("--duration: " + tools::Quoted(text) + " is not a number of seconds");
    }
    return std::chrono::milliseconds(static_cast<std::int64_t>(value * 1000));
}

// The text in lines of a width that fits, each after the first one with blanks before it.
std::string Wrapped(std::string const& text, std::size_t indent) {
    constexpr std::size_t width = 94;
    std::string wrapped;
    std::size_t column = indent;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (column > indent && column + 1 + word.size() > width) {
            wrapped += '\n' + std::string(indent, ' ');
            column = indent;
        } else if (column > indent) {
            wrapped += ' ';
            ++column;
        }
        wrapped += word;
        column += word.size();
    }
    return wrapped;
}

}  // namespace

std::vector<CommandLine::Option> const& CommandLine::Options() {
    using Line = CommandLine;
    using Text = std::string const&;
    static std::vector<Option> const options = {
        {"--bind", "ADDRESS", "IPv4 address to listen on (default 127.0.0.1)",
         [](Line& line, Text value) { line.bindAddress = ReadAddress(value); }},
        {"--port", "N",
         "UDP port of the first device (default 47808); 0 takes any free port. Further devices without their "
         "own port take the ports after it.",
         [](Line& line, Text value) { line.port = ReadPort(value); }},
        {"--devices", "N",
         "make N devices of the only one in the file: name-2, name-3 ... with the instances, ports and "
         "addresses behind a router that follow",
         [](Line& line, Text value) { line.devices = ReadCount(value); }},
        {"--verbose", nullptr, "log every request to standard error",
         [](Line& line, Text) { line.isVerbose = true; }},
        {"--quiet", nullptr, "log no requests (default)", [](Line& line, Text) { line.isVerbose = false; }},
        {"--duration", "SECONDS", "end after that time",
         [](Line& line, Text value) { line.duration = ReadSeconds(value); }},
        {"--exit-with-stdin", nullptr, "end when standard input is closed",
         [](Line& line, Text) { line.exitsWithStdin = true; }},
        {"--help", nullptr, "show this text", [](Line& line, Text) { line.wantsHelp = true; }},
        {"--version", nullptr, "show the version", [](Line& line, Text) { line.wantsVersion = true; }},
    };
    return options;
}

char const* CommandLine::Brief() {
    return "BACnet/IP devices on UDP";
}

char const* CommandLine::Files() {
    return "Each DEVICE-FILE, which is Lua, describes one or more devices and their objects.";
}

char const* CommandLine::Notes() {
    return NotesText;
}

std::string CommandLine::Help() {
    constexpr std::size_t column = 22;
    std::string text = "bacnet-simulator DEVICE-FILE... [OPTION...]\n\n" +
                       Wrapped(std::string(Brief()) + ". " + Files(), 0) + "\n\n";
    for (Option const& option : Options()) {
        std::string begin =
            std::string("  ") + option.name + (option.value ? " " : "") + (option.value ? option.value : "");
        begin.resize(column, ' ');
        text += begin + Wrapped(option.text, column) + "\n";
    }
    return text + "\n" + NotesText;
}

CommandLine CommandLine::Parse(std::vector<std::string> const& arguments) {
    CommandLine result;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string const& name = arguments[i];
        auto const option = std::find_if(Options().begin(), Options().end(),
                                         [&](Option const& known) { return known.name == name; });
        if (option == Options().end()) {
            if (name.empty() || name[0] == '-') {
                throw std::invalid_argument("unexpected argument " + tools::Quoted(name));
            }
            result.deviceFiles.push_back(name);
            continue;
        }
        if (option->value && i + 1 == arguments.size()) {
            throw std::invalid_argument(name + ": a value is missing");
        }
        option->take(result, option->value ? arguments[++i] : std::string());
    }
    if (result.deviceFiles.empty() && !result.wantsHelp && !result.wantsVersion) {
        throw std::invalid_argument("the device file is missing");
    }
    return result;
}

}  // namespace simulator
