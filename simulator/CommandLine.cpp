#include "CommandLine.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <cstddef>
#include <stdexcept>

#include "Printable.h"

namespace simulator {

namespace {

constexpr char const* HelpText = R"(bacnet-simulator DEVICE-FILE... [OPTION...]

BACnet/IP devices on UDP. Each DEVICE-FILE, which is Lua, describes one or more devices
and their objects.

  --bind ADDRESS      IPv4 address to listen on (default 127.0.0.1)
  --port N            UDP port of the first device (default 47808); 0 takes any free port.
                      Further devices without their own port take the ports after it.
  --devices N         make N devices of the only one in the file: name-2, name-3 ... with the
                      instances, ports and addresses behind a router that follow
  --verbose           log every request to standard error
  --quiet             log no requests (default)
  --duration SECONDS  end after that time
  --exit-with-stdin   end when standard input is closed
  --help              show this text
  --version           show the version

Commands on standard input make devices answer wrongly while they run:

  fault NAME KIND [key=value ...]   such as: fault AHU-1 silence duration=10
  clear NAME                        end the faults of a device; * stands for all
  faults                            list the faults
  help                              list the kinds and their keys

For each device one line is printed as soon as it answers: ready NAME ADDRESS:PORT

Exit codes: 0 ended as asked, also by SIGINT and SIGTERM; 1 wrong command line;
2 mistake in the device file; 3 the socket cannot be opened.
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

}  // namespace

char const* CommandLine::Help() {
    return HelpText;
}

CommandLine CommandLine::Parse(std::vector<std::string> const& arguments) {
    CommandLine result;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string const& name = arguments[i];
        auto const value = [&]() -> std::string const& {
            if (i + 1 == arguments.size()) {
                throw std::invalid_argument(name + ": a value is missing");
            }
            return arguments[++i];
        };
        if (name == "--bind") {
            result.bindAddress = ReadAddress(value());
        } else if (name == "--port") {
            result.port = ReadPort(value());
        } else if (name == "--devices") {
            result.devices = ReadCount(value());
        } else if (name == "--duration") {
            result.duration = ReadSeconds(value());
        } else if (name == "--verbose" || name == "--quiet") {
            result.isVerbose = name == "--verbose";
        } else if (name == "--exit-with-stdin") {
            result.exitsWithStdin = true;
        } else if (name == "--help") {
            result.wantsHelp = true;
        } else if (name == "--version") {
            result.wantsVersion = true;
        } else if (name.empty() || name[0] == '-') {
            throw std::invalid_argument("unexpected argument " + tools::Quoted(name));
        } else {
            result.deviceFiles.push_back(name);
        }
    }
    if (result.deviceFiles.empty() && !result.wantsHelp && !result.wantsVersion) {
        throw std::invalid_argument("the device file is missing");
    }
    return result;
}

}  // namespace simulator
