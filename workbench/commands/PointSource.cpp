#include "PointSource.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <ostream>

#include "AddressArgument.h"
#include "DeviceReading.h"
#include "EdeColumns.h"
#include "Printable.h"
#include "ProjectInventory.h"

namespace workbench {

namespace {

// Devices that did not answer have no instance, by which a list could name them.
PointPlant ReadAnswering(PointSourceOptions const& options, Streams const& streams) {
    NetworkCommand network(options, streams);
    DevicesRead read = ReadDevices(network, TargetsOf(options.sources), streams.err);
    std::vector<DeviceRecord>& devices = read.inventory.devices;
    devices.erase(std::remove_if(devices.begin(), devices.end(),
                                 [](DeviceRecord const& device) {
                                     return device.Instance() == standard::ObjectId::LastInstance;
                                 }),
                  devices.end());
    return {std::move(read.inventory), {}, read.isWhole};
}

}  // namespace

bool IsProjectFile(std::string const& source) {
    return LettersOf(std::filesystem::path(source).extension().string()) == "lua";
}

void AddPointSourceOptions(CLI::App& command, PointSourceOptions& options, char const* description) {
    command.add_option("SOURCE", options.sources, description)->required();
    AddDefineOption(command, options.params);
    AddRequestOptions(command, options);
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
    if (strict) {
        ExpectWhole(list.report, path);
    }
    return {std::move(list.inventory), list.heading, list.report.IsWhole()};
}

PointPlant ReadPoints(PointSourceOptions const& options, Streams const& streams) {
    std::string const& first = options.sources.front();
    if (IsProjectFile(first)) {
        return {InventoryOfProject(first, options.params), {}, true};
    }
    return IsPointListFile(first) ? ReadPointList(first, options.strict, streams)
                                  : ReadAnswering(options, streams);
}

}  // namespace workbench
