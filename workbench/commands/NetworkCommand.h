#pragma once

#include <functional>
#include <optional>
#include <string>

#include "BrowseSettings.h"
#include "Command.h"
#include "CommonOptions.h"
#include "Peer.h"
#include "ProgressLine.h"
#include "Signals.h"
#include "TextStyle.h"

namespace workbench {

// What the commands have in common that ask the devices of a network: how they ask, and how they show it.
struct NetworkOptions {
    unsigned timeout = 2000;  // milliseconds
    unsigned retries = 1;
    std::optional<unsigned> rate;
    OutputFormat format = OutputFormat::Auto;
};

// --timeout, --retries and --rate.
void AddRequestOptions(CLI::App& command, NetworkOptions& options);
// --rate alone.
void AddRateOption(CLI::App& command, NetworkOptions& options);

// The address of a text of the command line. A mistake throws an exception of CLI11.
standard::Peer AddressArgument(std::string const& text);
standard::Endpoint EndpointArgument(std::string const& text);

// A line of progress and the signals, for the time of such a command.
class NetworkCommand {
public:
    NetworkCommand(NetworkOptions const& networkOptions, Streams const& commandStreams)
        : options(networkOptions),
          streams(commandStreams),
          signals(nullptr),
          line(streams.err, streams.errIsTerminal) {}

    BrowseSettings Settings() const;
    bool IsStopped() const { return signals.IsStopRequested(); }
    std::function<bool()> StopFunction() const {
        return [this] { return IsStopped(); };
    }
    // Shows a line in a terminal; for one thread at a time.
    void Show(std::string const& text);
    void Clear() { line.Clear(); }
    // A table in a terminal and lines elsewhere, unless an option says otherwise.
    OutputFormat Format() const;
    TextStyle Style() const;
    // Writes the result. Throws std::runtime_error if that is not possible.
    void Print(std::string const& text);

private:
    NetworkOptions const& options;
    Streams const& streams;
    Signals signals;
    ProgressLine line;
};

}  // namespace workbench
