#include "NetworkCommand.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <map>
#include <ostream>
#include <stdexcept>

#include "AddressArgument.h"

namespace workbench {

void AddRateOption(CLI::App& command, NetworkOptions& options) {
    command
        .add_option(
            "--rate", options.rate,
            "The most requests a second to one device: 1 to 1000 (default: 100, and 10 behind a router)")
        ->type_name("N")
        ->check(CLI::Range(1u, 1000u).description(""));
}

void AddRequestOptions(CLI::App& command, NetworkOptions& options) {
    command
        .add_option("--timeout", options.timeout,
                    "How long a device may take to answer a request: 10 to 60000 (default: 2000)")
        ->type_name("MS")
        ->check(CLI::Range(10u, 60000u).description(""));
    command
        .add_option("--retries", options.retries,
                    "Repetitions of a request without an answer: 0 to 10 (default: 1)")
        ->type_name("N")
        ->check(CLI::Range(0u, 10u).description(""));
    AddRateOption(command, options);
}

void AddOutputOption(CLI::App& command, NetworkOptions& options) {
    static std::map<std::string, OutputFormat> const formats = {{"auto", OutputFormat::Auto},
                                                                {"table", OutputFormat::Table},
                                                                {"lines", OutputFormat::Lines},
                                                                {"json", OutputFormat::Json}};
    command
        .add_option_function<std::string>(
            "--format", [&options](std::string const& name) { options.format = formats.at(name); },
            "auto, table, lines or json (default: auto, a table in a terminal and lines elsewhere)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(formats).description(""));
}

standard::Peer AddressArgument(std::string const& text) try {
    return ParseAddress(text);
} catch (AddressMistake const& mistake) {
    throw CLI::ValidationError("ADDRESS", mistake.what());
}

standard::Endpoint EndpointArgument(std::string const& text) try {
    return ParseEndpoint(text);
} catch (AddressMistake const& mistake) {
    throw CLI::ValidationError("ADDRESS", mistake.what());
}

BrowseSettings NetworkCommand::Settings() const {
    BrowseSettings settings;
    settings.client.timeout = std::chrono::milliseconds(options.timeout);
    settings.client.segmentTimeout = std::min(settings.client.timeout, settings.client.segmentTimeout);
    settings.client.retries = options.retries;
    settings.rate = options.rate;
    return settings;
}

void NetworkCommand::Show(std::string const& text) {
    if (signals.TakeSuspendRequest()) {
        line.Clear();
        Signals::Suspend();
    }
    line.Show(text);
}

OutputFormat NetworkCommand::Format() const {
    return options.format != OutputFormat::Auto ? options.format
           : streams.outIsTerminal              ? OutputFormat::Table
                                                : OutputFormat::Lines;
}

TextStyle NetworkCommand::Style() const {
    char const* const noColour = std::getenv("NO_COLOR");
    bool const isPlain = noColour && *noColour != '\0';
    return {streams.outIsTerminal ? TerminalWidth(STDOUT_FILENO) : 0, streams.outIsTerminal && !isPlain};
}

void NetworkCommand::Print(std::string const& text) {
    line.Clear();
    streams.out << text << std::flush;
    if (!streams.out) {
        throw std::runtime_error("standard output cannot be written");
    }
}

}  // namespace workbench
