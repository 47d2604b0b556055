#include "DiscoverCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>

#include "DiscoverFormats.h"
#include "DiscoveryOptions.h"
#include "ExitCode.h"
#include "NetworkCommand.h"
#include "PlantDiscovery.h"

namespace workbench {

namespace {

constexpr char Help[] =
    R"(Asks Who-Is by broadcast on each interface of this machine (on loopback only if it is named with
--interface or if there is no other one), then in the networks that routers name, and reads name,
model and vendor of each device that answers. With addresses it asks only these: devices, routers, or
the broadcast address of another subnet. Nothing is written.

Below a device is what is wrong with it. In a pipe the column "marks" has the names of that, and JSON
both, in "marks":
  same-instance   another device has its instance
  answers-twice   it is found in several ways, or answers more often than it was asked
  shared-address  several devices answer from its address
  not-readable    its Device object cannot be read at the address from which it answers
  other-instance  its Device object has another instance than its answer
  no-instance     its instance is 4194303: it was never given one
  contradicts     its answers state different properties

Examples:
  dorvel-workbench discover
  dorvel-workbench discover --interface eth1 --range 1000-1999
  dorvel-workbench discover 192.168.1.20 192.168.2.255
  dorvel-workbench discover --bbmd 10.0.0.1 --timeout 5000 --format json

Exit codes:
  0  devices were found, and nothing is wrong with them
  1  no device was found, something is wrong with one, or Ctrl-C has ended it early
  2  a mistake on the command line
  4  something else failed: no interface, no socket, or the BBMD does not register this program
  130  a second Ctrl-C ended the program at once)";

struct DiscoverOptions : NetworkOptions {
    std::vector<std::string> addresses;
    DiscoverySettings settings;
    unsigned wait = 3000;
};

int Discover(DiscoverOptions const& options, Streams const& streams) {
    NetworkCommand network(options, streams);
    DiscoverySettings settings = options.settings;
    settings.wait = std::chrono::milliseconds(options.wait);
    settings.reading = network.Settings();
    settings.isStopped = network.StopFunction();
    settings.progress = [&network](std::string const& text) { network.Show(text); };
    network.Show("asking: 0 devices");
    DiscoveredPlant const plant = DiscoverPlant(settings);
    OutputFormat const format = network.Format();
    network.Print(format == OutputFormat::Table   ? DiscoverText(plant, network.Style())
                  : format == OutputFormat::Lines ? DiscoverLines(plant)
                                                  : DiscoverJson(plant));
    if (format == OutputFormat::Lines) {
        for (std::string const& note : plant.notes) {
            streams.err << note << "\n";
        }
    }
    bool const isGood = !plant.devices.empty() && !HasMarks(plant) && !plant.isStopped;
    return isGood ? tools::WorkbenchExit::Ok : tools::WorkbenchExit::Fault;
}

void Define(CLI::App& command, DiscoverOptions& options) {
    command.add_option_function<std::vector<std::string>>(
        "ADDRESS",
        [&options](std::vector<std::string> const& texts) {
            for (std::string const& text : texts) {
                options.settings.addresses.push_back(AddressArgument(text));
            }
        },
        "Asks only these: ADDRESS[:PORT][,NET:MAC]");
    AddDiscoveryOptions(command, options.settings);
    command
        .add_option("--timeout", options.wait,
                    "How long devices may take to answer the last question: 100 to 60000 (default: 3000)")
        ->type_name("MS")
        ->check(CLI::Range(100u, 60000u).description(""));
    AddRateOption(command, options);
    AddOutputOption(command, options.format);
    command.footer(Help);
}

}  // namespace

void AddDiscoverCommand(CLI::App& program, CommandBody& chosen) {
    auto const options = std::make_shared<DiscoverOptions>();
    CLI::App* const command = program.add_subcommand("discover", "Finds the devices of a network");
    Define(*command, *options);
    command->callback([options, &chosen] {
        chosen = [options](Streams const& streams) { return Discover(*options, streams); };
    });
}

}  // namespace workbench
