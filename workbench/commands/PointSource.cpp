#include "PointSource.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <ostream>

#include "AddressArgument.h"
#include "BrowsePlant.h"
#include "EdeColumns.h"
#include "Printable.h"
#include "ProgressLine.h"
#include "ProjectError.h"
#include "ProjectInventory.h"
#include "Signals.h"

namespace workbench {

namespace {

std::string EndingOf(std::string const& source) {
    return LettersOf(std::filesystem::path(source).extension().string());
}

BrowseSettings SettingsOf(PointSourceOptions const& options) {
    BrowseSettings settings;
    settings.rate = options.rate;
    if (options.timeout) {
        settings.client.timeout = std::chrono::milliseconds(*options.timeout);
    }
    return settings;
}

// Devices that did not answer have no instance, by which a list could name them.
void TakeAnswering(std::vector<DeviceRecord> records, PointPlant& plant, std::ostream& err) {
    std::vector<DeviceRecord> answering;
    for (DeviceRecord& record : records) {
        for (std::string const& note : record.notes) {
            err << (record.peer ? AddressText(*record.peer) + ": " : std::string()) << tools::Printable(note)
                << "\n";
        }
        plant.isWhole = plant.isWhole && record.isComplete;
        if (record.Instance() != standard::ObjectId::LastInstance) {
            answering.push_back(std::move(record));
        }
    }
    plant.inventory = InventoryOf(std::move(answering));
}

PointPlant ReadDevices(PointSourceOptions const& options, Streams const& streams) {
    std::vector<BrowseTarget> targets;
    for (std::string const& address : options.sources) {
        BrowseTarget const target{ParseAddress(address)};
        if (std::none_of(targets.begin(), targets.end(),
                         [&](BrowseTarget const& known) { return known.peer == target.peer; })) {
            targets.push_back(target);
        }
    }
    Signals signals(nullptr);
    ProgressLine line(streams.err, streams.errIsTerminal);
    PointPlant plant;
    std::vector<DeviceRecord> records = BrowsePlant(
        targets, SettingsOf(options), [&signals] { return signals.IsStopRequested(); },
        [&](std::string const& text) {
            if (signals.TakeSuspendRequest()) {
                line.Clear();
                Signals::Suspend();
            }
            line.Show(text);
        });
    line.Clear();
    plant.isWhole = !signals.IsStopRequested();
    TakeAnswering(std::move(records), plant, streams.err);
    return plant;
}

}  // namespace

bool IsProjectFile(std::string const& source) {
    return EndingOf(source) == "lua";
}

bool IsPointListFile(std::string const& source) {
    return EndingOf(source) == "csv" || EndingOf(source) == "txt";
}

void AddPointSourceOptions(CLI::App& command, PointSourceOptions& options, char const* description) {
    command.add_option("SOURCE", options.sources, description)->required();
    AddDefineOption(command, options.params);
    command
        .add_option("--rate", options.rate,
                    "The most requests a second to a device (default: 100, and 10 behind a router)")
        ->type_name("N")
        ->check(CLI::Range(1u, 10000u).description(""));
    command
        .add_option("--timeout", options.timeout,
                    "How long a device may take to answer: 10 to 60000 (default: 2000)")
        ->type_name("MS")
        ->check(CLI::Range(10u, 60000u).description(""));
    command.add_flag("--strict", options.strict, "What a point list has and cannot be used is a mistake");
}

void CheckPointSource(PointSourceOptions const& options) {
    for (std::string const& source : options.sources) {
        if (IsProjectFile(source) || IsPointListFile(source)) {
            if (options.sources.size() > 1) {
                throw CLI::ValidationError("SOURCE", tools::Quoted(source) + " must be the only source");
            }
            return;
        }
        try {
            ParseAddress(source);
        } catch (AddressMistake const& mistake) {
            throw CLI::ValidationError(
                "SOURCE", std::string(mistake.what()) + "; a project ends in .lua, a point list in .csv");
        }
    }
}

PointPlant ReadPointList(std::string const& path, bool strict, Streams const& streams) {
    EdeImport list = ImportEde(path);
    if (!list.report.lines.empty()) {
        streams.err << ImportReportText(list.report) << std::flush;
    }
    if (strict && !list.report.IsWhole()) {
        throw ProjectError(tools::Printable(path) +
                           ": not everything in it can be used, and --strict makes that a mistake");
    }
    return {std::move(list.inventory), list.heading, list.report.IsWhole()};
}

PointPlant ReadPoints(PointSourceOptions const& options, Streams const& streams) {
    std::string const& first = options.sources.front();
    if (IsProjectFile(first)) {
        return {InventoryOfProject(first, options.params), {}, true};
    }
    return IsPointListFile(first) ? ReadPointList(first, options.strict, streams)
                                  : ReadDevices(options, streams);
}

}  // namespace workbench
