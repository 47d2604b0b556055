#include "PlantSource.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <ostream>

#include "AddressArgument.h"
#include "BrowsePlant.h"
#include "DeviceAddresses.h"
#include "EdeImport.h"
#include "PlantDiscovery.h"
#include "Printable.h"
#include "ProjectError.h"

namespace workbench {

namespace {

constexpr char Discover[] = "discover";
constexpr char ListEnding[] = ".csv";

bool IsList(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    std::size_t const length = std::size(ListEnding) - 1;
    return text.size() > length && text.compare(text.size() - length, length, ListEnding) == 0;
}

bool IsDiscovery(SourceOptions const& options) {
    return options.from.size() == 1 && options.from[0] == Discover;
}

// Each address once.
void Add(std::vector<BrowseTarget>& targets, BrowseTarget const& target) {
    bool const isKnown = std::any_of(targets.begin(), targets.end(), [&target](BrowseTarget const& known) {
        return known.peer == target.peer;
    });
    if (!isKnown) {
        targets.push_back(target);
    }
}

std::vector<BrowseTarget> TargetsOf(std::vector<std::string> const& addresses) {
    std::vector<BrowseTarget> targets;
    for (std::string const& address : addresses) {
        Add(targets, {ParseAddress(address), std::nullopt});
    }
    return targets;
}

// Reads devices of the network.
class Reading {
public:
    Reading(SourceOptions const& sourceOptions, Streams const& programStreams)
        : options(sourceOptions), streams(programStreams), network(options, streams) {}

    PlantReading Read() {
        std::vector<BrowseTarget> const targets = IsDiscovery(options) ? Found() : TargetsOf(options.from);
        PlantReading reading;
        reading.inventory =
            InventoryOf(BrowsePlant(targets, network.Settings(), network.StopFunction(), Progress()));
        network.Clear();
        reading.isWhole = isWhole && !network.IsStopped();
        for (DeviceRecord const& device : reading.inventory.devices) {
            reading.isWhole = reading.isWhole && device.isComplete;
            Report(device);
        }
        return reading;
    }

private:
    std::function<void(std::string const&)> Progress() {
        return [this](std::string const& text) { network.Show(text); };
    }

    std::vector<BrowseTarget> Found() {
        DiscoverySettings settings;
        settings.interfaces = options.interfaces;
        settings.reading = network.Settings();
        settings.isStopped = network.StopFunction();
        settings.progress = Progress();
        DiscoveredPlant const plant = DiscoverPlant(settings);
        network.Clear();
        for (std::string const& note : plant.notes) {
            streams.err << tools::Printable(note) << "\n";
        }
        isWhole = !plant.isStopped;
        std::vector<BrowseTarget> targets;
        for (MarkedDevice const& found : plant.devices) {
            if (found.record.peer) {
                bool const isInstance = found.announced < standard::ObjectId::LastInstance;
                Add(targets,
                    {*found.record.peer, isInstance ? std::optional(found.announced) : std::nullopt});
            }
        }
        return targets;
    }

    void Report(DeviceRecord const& device) {
        for (std::string const& note : device.notes) {
            streams.err << (device.peer ? AddressText(*device.peer) + ": " : std::string())
                        << tools::Printable(note) << "\n";
        }
    }

    SourceOptions const& options;
    Streams const& streams;
    NetworkCommand network;
    bool isWhole = true;
};

PlantReading ReadList(SourceOptions const& options, Streams const& streams) {
    AddressTable table =
        options.addressTable.empty() ? AddressTable() : ReadAddressTable(options.addressTable);
    for (std::string const& address : options.deviceAddresses) {
        AddDeviceAddress(table, address);
    }
    EdeImport list = ImportEde(options.from[0]);
    Resolve(list.inventory, table, list.report);
    streams.err << ImportReportText(list.report) << std::flush;
    if (options.strict && !list.report.IsWhole()) {
        throw ProjectError(tools::Printable(options.from[0]) +
                           ": not everything in it can be used, and --strict makes that a mistake");
    }
    return {std::move(list.inventory), false, list.report.IsWhole()};
}

void Refuse(std::string const& option, std::string const& reason) {
    throw CLI::ValidationError(option, reason);
}

}  // namespace

bool IsPointList(SourceOptions const& options) {
    return options.from.size() == 1 && IsList(options.from[0]);
}

void CheckSource(SourceOptions const& options) {
    bool const isList = IsPointList(options);
    if (!isList && !options.deviceAddresses.empty()) {
        Refuse("--define", "is for a point list, as in --from plant_EDE.csv -D 2001=192.168.1.20");
    }
    if (!isList && !options.addressTable.empty()) {
        Refuse("--addresses", "is for a point list, as in --from plant_EDE.csv --addresses devices.txt");
    }
    if (isList || IsDiscovery(options)) {
        return;
    }
    for (std::string const& source : options.from) {
        if (source == Discover || IsList(source)) {
            Refuse("--from", tools::Quoted(source) + " must be the only source");
        }
    }
    try {
        TargetsOf(options.from);
    } catch (AddressMistake const& mistake) {
        Refuse("--from", mistake.what());
    }
}

void AddSourceOptions(CLI::App& command, SourceOptions& options) {
    command
        .add_option("--from", options.from, "discover, addresses of devices, or a point list FILE_EDE.csv")
        ->type_name("SOURCE")
        ->required();
    command
        .add_option("--interface", options.interfaces,
                    "Where discover asks; may be repeated (default: everywhere)")
        ->type_name("NAME|ADDRESS")
        ->allow_extra_args(false);
    AddRequestOptions(command, options);
    command
        .add_option("-D,--define", options.deviceAddresses,
                    "The address of a device of a point list; may be repeated")
        ->type_name("INSTANCE=ADDRESS")
        ->allow_extra_args(false);
    command
        .add_option("--addresses", options.addressTable,
                    "A file with the addresses of the devices of a point list")
        ->type_name("TABLE");
    command.add_flag("--strict", options.strict,
                     "What cannot be used of a point list is a mistake, and nothing is written");
}

PlantReading ReadPlant(SourceOptions const& options, Streams const& streams) {
    return IsPointList(options) ? ReadList(options, streams) : Reading(options, streams).Read();
}

}  // namespace workbench
