#include "PlantSource.h"

#include <CLI/CLI.hpp>
#include <ostream>

#include "AddressArgument.h"
#include "CommonOptions.h"
#include "DeviceAddresses.h"
#include "DeviceReading.h"
#include "DiscoveryOptions.h"
#include "EdeImport.h"
#include "Printable.h"

namespace workbench {

namespace {

constexpr char Discover[] = "discover";

bool IsDiscovery(SourceOptions const& options) {
    return options.from.size() == 1 && options.from[0] == Discover;
}

// Reads devices of the network.
class Reading {
public:
    Reading(SourceOptions const& sourceOptions, Streams const& programStreams)
        : options(sourceOptions), streams(programStreams), network(options, streams) {}

    PlantReading Read() {
        std::vector<BrowseTarget> const targets = IsDiscovery(options) ? Found() : TargetsOf(options.from);
        DevicesRead read = ReadDevices(network, targets, streams.err);
        return {std::move(read.inventory), true, read.isWhole && isWhole};
    }

private:
    std::vector<BrowseTarget> Found() {
        DiscoverySettings settings = options.discovery;
        settings.reading = network.Settings();
        settings.isStopped = network.StopFunction();
        settings.progress = [this](std::string const& text) { network.Show(text); };
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
                AddTarget(targets,
                          {*found.record.peer, isInstance ? std::optional(found.announced) : std::nullopt});
            }
        }
        return targets;
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
    if (options.strict) {
        ExpectWhole(list.report, options.from[0]);
    }
    return {std::move(list.inventory), false, list.report.IsWhole()};
}

// Whether an option says where or for which devices to ask.
bool IsAsked(DiscoverySettings const& settings) {
    return !settings.interfaces.empty() || settings.range || settings.bbmd ||
           settings.port != DiscoverySettings().port;
}

void Refuse(std::string const& option, std::string const& reason) {
    throw CLI::ValidationError(option, reason);
}

}  // namespace

bool IsPointList(SourceOptions const& options) {
    return options.from.size() == 1 && IsPointListFile(options.from[0]);
}

void CheckSource(SourceOptions const& options) {
    bool const isList = IsPointList(options);
    if (!isList && !options.deviceAddresses.empty()) {
        Refuse("--define", "is for a point list, as in --from plant_EDE.csv -D 2001=192.168.1.20");
    }
    if (!isList && !options.addressTable.empty()) {
        Refuse("--addresses", "is for a point list, as in --from plant_EDE.csv --addresses devices.txt");
    }
    if (!IsDiscovery(options) && IsAsked(options.discovery)) {
        Refuse("--interface, --range, --bbmd, --port", "are for --from discover");
    }
    if (isList || IsDiscovery(options)) {
        return;
    }
    for (std::string const& source : options.from) {
        if (source == Discover || IsPointListFile(source)) {
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
    CLI::Option* const from = command.add_option(
        "--from", options.from, "discover, addresses of devices, or a point list FILE_EDE.csv");
    from->type_name("SOURCE")->required();
    NameWords(*from, {Discover}, WordsKind::One);
    AddDiscoveryOptions(command, options.discovery);
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
