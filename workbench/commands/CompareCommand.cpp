#include "CompareCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>
#include <stdexcept>

#include "Comparison.h"
#include "ExitCode.h"
#include "PointSource.h"
#include "Printable.h"

namespace workbench {

namespace {

constexpr char CompareHelp[] =
    R"(Reports what differs between a point list and devices, a project or another point list: devices and
objects that are missing or additional, other names, other units, other state texts. What the list
does not say of an object is not compared. Nothing is written to any device.

SOURCE is one of:
  ADDRESS...         devices: 192.168.1.20, 192.168.1.20:47809, or behind a router 192.168.1.1,5:10:20
  PROJECT.lua        a project; the names of its blocks are not compared with those of devices
  FILE_EDE.csv       another point list

Text has a line for each difference. With --format json each is an object on a line with difference,
device, object, name, listed and actual, and the last one has the counts.

Examples:
  dorvel-workbench compare delivered_EDE.csv 192.168.1.20 192.168.1.1,5:10:20
  dorvel-workbench compare delivered_EDE.csv plant.lua --format json

Exit codes:
  0  no differences
  1  differences; or not everything was compared: Ctrl-C, a device that did not answer, something in
     a list that cannot be used
  2  a mistake on the command line or in a file
  4  something else failed
  130  a second Ctrl-C ended the program at once)";

struct CompareOptions {
    std::string list;
    PointSourceOptions source;
    bool isJson = false;
};

int CompareList(CompareOptions const& options, Streams const& streams) {
    PointPlant const list = ReadPointList(options.list, options.source.strict, streams);
    PointPlant const plant = ReadPoints(options.source, streams);
    bool const isProject = IsProjectFile(options.source.sources.front());
    Comparison const comparison =
        Compare(list.inventory, plant.inventory, isProject ? DeviceNames::Ignore : DeviceNames::Compare);
    streams.out << (options.isJson ? ComparisonJson(comparison) : ComparisonText(comparison));
    if (!streams.out.flush()) {
        throw std::runtime_error("standard output cannot be written");
    }
    bool const isEqual =
        comparison.differences.empty() && comparison.notes.empty() && list.isWhole && plant.isWhole;
    return isEqual ? tools::WorkbenchExit::Ok : tools::WorkbenchExit::Fault;
}

}  // namespace

void AddCompareCommand(CLI::App& program, CommandBody& chosen) {
    auto const options = std::make_shared<CompareOptions>();
    CLI::App* const command =
        program.add_subcommand("compare", "Compares a point list with devices or with a project");
    command->add_option("FILE_EDE.csv", options->list, "The point list")->required();
    AddPointSourceOptions(*command, options->source, "Addresses of devices, PROJECT.lua, or FILE_EDE.csv");
    AddFormatOption(*command, options->isJson);
    command->footer(CompareHelp);
    command->callback([options, &chosen] {
        CheckPointSource(options->source);
        chosen = [options](Streams const& streams) { return CompareList(*options, streams); };
    });
}

}  // namespace workbench
