#include "NetworkCommand.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
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
    AddWaitOptions(command, options.timeout, options.retries, " a request");
    AddRateOption(command, options);
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
