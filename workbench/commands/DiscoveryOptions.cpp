#include "DiscoveryOptions.h"

#include <CLI/CLI.hpp>
#include <charconv>

#include "NetworkCommand.h"
#include "ObjectId.h"

namespace workbench {

namespace {

std::uint32_t Instance(std::string const& text) {
    std::uint32_t number = 0;
    auto const end = text.data() + text.size();
    auto const result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end || number > standard::ObjectId::LastInstance) {
        throw CLI::ValidationError("--range", "\"" + text + "\" is not an instance; allowed is 0 to 4194303");
    }
    return number;
}

std::pair<std::uint32_t, std::uint32_t> RangeOf(std::string const& text) {
    std::size_t const dash = text.find('-');
    std::uint32_t const low = Instance(text.substr(0, dash));
    std::uint32_t const high = dash == std::string::npos ? low : Instance(text.substr(dash + 1));
    if (low > high) {
        throw CLI::ValidationError("--range",
                                   "\"" + text + "\": the first instance must not be the larger one");
    }
    return {low, high};
}

}  // namespace

void AddDiscoveryOptions(CLI::App& command, DiscoverySettings& settings) {
    command
        .add_option("--interface", settings.interfaces,
                    "The interface to ask on, by name or address; may be repeated (default: each)")
        ->type_name("INTERFACE")
        ->allow_extra_args(false);
    command
        .add_option_function<std::string>(
            "--range", [&settings](std::string const& text) { settings.range = RangeOf(text); },
            "Only devices with these instances")
        ->type_name("LOW-HIGH");
    command
        .add_option_function<std::string>(
            "--bbmd", [&settings](std::string const& text) { settings.bbmd = EndpointArgument(text); },
            "Registers with that BBMD as a foreign device, to ask in its networks")
        ->type_name("ADDRESS[:PORT]");
    command.add_option("--port", settings.port, "The UDP port of the devices (default: 47808)")
        ->type_name("N")
        ->check(CLI::Range(1, 65535).description(""));
}

}  // namespace workbench
