#include "BrowseCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <ostream>

#include "AddressArgument.h"
#include "BrowseFormats.h"
#include "DeviceReading.h"
#include "ExitCode.h"
#include "NetworkCommand.h"
#include "ObjectArgument.h"
#include "Printable.h"
#include "StoppableLink.h"
#include "UdpLink.h"

namespace workbench {

namespace {

constexpr char Help[] =
    R"(Reads devices by the BACnet standard and shows all their objects: name, present value with unit or
state, status flags, and whether the driver can read and write them, or why not. With an object, all
of its properties: the priority array with the names of its levels, schedules in words. Each device
is asked for one thing at a time. Nothing is written.

Ctrl-C ends the reading and shows what was read. What a device does not answer is left out and said.

Examples:
  dorvel-workbench browse 192.168.1.20
  dorvel-workbench browse 192.168.1.1,5:10:20 --rate 5
  dorvel-workbench browse 192.168.1.20 analog-output 1
  dorvel-workbench browse 192.168.1.20 192.168.1.21:47809 --format json

Exit codes:
  0  everything was read
  1  something could not be read, a device contradicts itself, or Ctrl-C has ended it early
  2  a mistake on the command line
  4  something else failed, such as opening a socket
  130  a second Ctrl-C ended the program at once)";

struct BrowseOptions : NetworkOptions {
    std::vector<standard::Peer> peers;
    std::optional<standard::ObjectId> object;
};

// Addresses, and after them an object in one word or two.
void TakeArguments(std::vector<std::string> const& words, BrowseOptions& options) {
    std::string object;
    for (std::string const& word : words) {
        bool const isAddress = word.substr(0, word.find(',')).find('.') != std::string::npos;
        if (isAddress && object.empty()) {
            options.peers.push_back(AddressArgument(word));
        } else {
            object += (object.empty() ? "" : " ") + word;
        }
    }
    if (options.peers.empty()) {
        options.peers.push_back(AddressArgument(object));
    }
    if (!object.empty()) {
        try {
            options.object = ParseObject(object);
        } catch (ObjectMistake const& mistake) {
            throw CLI::ValidationError("OBJECT", mistake.what());
        }
    }
    if (options.object && options.peers.size() > 1) {
        throw CLI::ValidationError("OBJECT", "is allowed with one address only");
    }
}

void ShowNotes(std::vector<DeviceRecord> const& devices, std::ostream& err) {
    for (DeviceRecord const& device : devices) {
        for (std::string const& note : NotesOf(device)) {
            err << tools::Printable(note) << "\n";
        }
    }
}

int BrowseDevices(BrowseOptions const& options, NetworkCommand& network, Streams const& streams) {
    std::vector<BrowseTarget> targets;
    for (standard::Peer const& peer : options.peers) {
        AddTarget(targets, {peer, std::nullopt});
    }
    BrowseSettings settings = network.Settings();
    settings.detail = Detail::Shown;
    std::vector<DeviceRecord> const devices = BrowsePlant(
        targets, settings, network.StopFunction(), [&](std::string const& text) { network.Show(text); });
    OutputFormat const format = network.Format();
    network.Print(format == OutputFormat::Table   ? BrowseText(devices, network.Style())
                  : format == OutputFormat::Lines ? BrowseLines(devices)
                                                  : BrowseJson(devices));
    if (format == OutputFormat::Lines) {
        ShowNotes(devices, streams.err);
    }
    bool const isGood = std::all_of(devices.begin(), devices.end(), [](DeviceRecord const& device) {
        return device.isComplete && device.notes.empty();
    });
    return isGood ? tools::WorkbenchExit::Ok : tools::WorkbenchExit::Fault;
}

int BrowseObject(BrowseOptions const& options, NetworkCommand& network, Streams const& streams) {
    standard::UdpLink socket{standard::Endpoint{}};
    StoppableLink link(socket, network.StopFunction());
    BrowseSettings settings = network.Settings();
    settings.detail = Detail::Shown;
    settings.hasObjects = false;
    DeviceRecord device = DeviceBrowser(link, settings).Browse(options.peers.front());
    DeviceBrowser::OneObject one;
    one.object.id = *options.object;
    if (device.isComplete) {
        one = DeviceBrowser(link, settings).BrowseObject(options.peers.front(), *options.object);
    } else {
        one.isComplete = false;
        one.notes = device.notes;
    }
    OutputFormat const format = network.Format();
    network.Print(format == OutputFormat::Table   ? OneObjectText(device, one, network.Style())
                  : format == OutputFormat::Lines ? OneObjectLines(device, one)
                                                  : OneObjectJson(device, one));
    if (format != OutputFormat::Table) {
        device.notes = one.notes;
        ShowNotes({device}, streams.err);
    }
    return one.isComplete && one.notes.empty() ? tools::WorkbenchExit::Ok : tools::WorkbenchExit::Fault;
}

}  // namespace

void AddBrowseCommand(CLI::App& program, CommandBody& chosen) {
    auto const options = std::make_shared<BrowseOptions>();
    CLI::App* const command = program.add_subcommand("browse", "Shows the objects of devices");
    command
        ->add_option_function<std::vector<std::string>>(
            "ADDRESS", [options](std::vector<std::string> const& words) { TakeArguments(words, *options); },
            "ADDRESS[:PORT][,NET:MAC], one or more, or one and an object such as \"analog-input 1\"")
        ->required();
    AddRequestOptions(*command, *options);
    AddOutputOption(*command, options->format);
    command->footer(Help);
    command->callback([options, &chosen] {
        chosen = [options](Streams const& streams) {
            NetworkCommand network(*options, streams);
            return options->object ? BrowseObject(*options, network, streams)
                                   : BrowseDevices(*options, network, streams);
        };
    });
}

}  // namespace workbench
