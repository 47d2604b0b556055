#include "EdeCommand.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <ostream>
#include <stdexcept>

#include "DeviceReading.h"
#include "EdeWriter.h"
#include "ExitCode.h"
#include "PointSource.h"
#include "Printable.h"

namespace workbench {

namespace {

constexpr char EdeHelp[] =
    R"(Writes the points of a project, of devices or of another point list as EDE files in layout 2.3:
NAME_EDE.csv, NAME_StateTexts.csv, NAME_Units.csv and NAME_ObjTypes.csv. Of a project it needs the
field DeviceInstance of each block; Unit, StateTexts, Description and Point of a variable are used.
Devices are read, one request at a time, and nothing is written to them. A point list that is read
and written has the form of the layout afterwards.

SOURCE is one of:
  PROJECT.lua        a project
  ADDRESS...         devices: 192.168.1.20, 192.168.1.20:47809, or behind a router 192.168.1.1,5:10:20
  FILE_EDE.csv       a point list, with those files beside it that it refers to

Ctrl-C ends the reading and writes what was read. Files that are there stay, unless --force is given.

Examples:
  dorvel-workbench ede plant.lua
  dorvel-workbench ede 192.168.1.20 192.168.1.1,5:10:20 -o north-wing
  dorvel-workbench ede delivered_EDE.csv -o plant --project-name "North wing"

Exit codes:
  0  done
  1  written, but not whole: Ctrl-C, a device that did not answer, something that a list cannot have
     or a row of the point list that cannot be used; or no device answered, and nothing is written
  2  a mistake on the command line or in a file; a file is there already
  4  something else failed, such as writing a file
  130  a second Ctrl-C ended the program at once)";

struct EdeOptions {
    PointSourceOptions source;
    std::string name;
    bool force = false;
    EdeHeading heading;  // empty where it is not given
};

// The time of the list: SOURCE_DATE_EPOCH for builds that have to give the same files, otherwise now.
std::string TimestampOfNow() {
    char const* const epoch = std::getenv("SOURCE_DATE_EPOCH");
    std::time_t const time = epoch && *epoch != '\0'
                                 ? static_cast<std::time_t>(std::strtoll(epoch, nullptr, 10))
                                 : std::time(nullptr);
    std::tm parts{};
    char text[32] = "";
    if (gmtime_r(&time, &parts)) {
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
    }
    return text;
}

std::string NameOf(EdeOptions const& options, Inventory const& inventory) {
    if (!options.name.empty()) {
        return options.name;
    }
    std::string const& source = options.source.sources.front();
    if (IsProjectFile(source)) {
        return std::filesystem::path(source).replace_extension().string();
    }
    return inventory.devices.size() == 1 ? "device-" + std::to_string(inventory.devices[0].Instance())
                                         : "plant";
}

void Replace(std::string& text, std::string const& given, std::string const& otherwise) {
    text = !given.empty() ? given : text.empty() ? otherwise : text;
}

EdeHeading HeadingOf(EdeOptions const& options, EdeHeading heading, std::string const& name) {
    Replace(heading.projectName, options.heading.projectName,
            std::filesystem::path(name).filename().string());
    Replace(heading.fileVersion, options.heading.fileVersion, "1");
    Replace(heading.author, options.heading.author, "");
    Replace(heading.timestamp, options.heading.timestamp, TimestampOfNow());
    return heading;
}

int WriteList(EdeOptions const& options, Streams const& streams) {
    PointPlant const plant = ReadPoints(options.source, streams);
    if (plant.inventory.devices.empty()) {
        streams.err << "no device answered; nothing is written\n";
        return tools::WorkbenchExit::Fault;
    }
    std::string const name = NameOf(options, plant.inventory);
    EdeTexts const texts = WriteEde(plant.inventory, HeadingOf(options, plant.heading, name));
    SaveEde(texts, name, options.force);
    std::size_t points = 0;
    for (DeviceRecord const& device : plant.inventory.devices) {
        points += device.objects.size();
    }
    for (std::string const& note : texts.notes) {
        streams.err << "note: " << tools::Printable(note) << "\n";
    }
    std::vector<std::string> const paths = EdePaths(name);
    streams.out << tools::Printable(paths[0]) << ": devices: " << plant.inventory.devices.size()
                << ", points: " << points << "\n";
    for (std::size_t i = 1; i < paths.size(); ++i) {
        streams.out << tools::Printable(paths[i]) << "\n";
    }
    if (!streams.out.flush()) {
        throw std::runtime_error("standard output cannot be written");
    }
    return plant.isWhole && texts.notes.empty() ? tools::WorkbenchExit::Ok : tools::WorkbenchExit::Fault;
}

void Check(EdeOptions const& options) {
    CheckPointSource(options.source);
    if (options.name.empty() && IsPointListFile(options.source.sources.front())) {
        throw CLI::ValidationError("--output",
                                   "a point list is written under another name: give it with -o NAME");
    }
}

void DefineEde(CLI::App& command, EdeOptions& options) {
    AddPointSourceOptions(command, options.source, "PROJECT.lua, addresses of devices, or FILE_EDE.csv");
    command
        .add_option("-o,--output", options.name,
                    "The name before _EDE.csv (default: that of the project, device-INSTANCE, or plant)")
        ->type_name("NAME");
    command.add_flag("--force", options.force, "Replaces files that are there");
    command.add_option("--project-name", options.heading.projectName, "PROJECT_NAME (default: NAME)")
        ->type_name("TEXT");
    command.add_option("--author", options.heading.author, "AUTHOR_OF_LAST_CHANGE")->type_name("TEXT");
    command
        .add_option("--file-version", options.heading.fileVersion, "VERSION_OF_REFERENCEFILE (default: 1)")
        ->type_name("TEXT");
    command
        .add_option("--timestamp", options.heading.timestamp,
                    "TIMESTAMP_OF_LAST_CHANGE (default: that of the point list, SOURCE_DATE_EPOCH, or now)")
        ->type_name("TEXT");
    command.footer(EdeHelp);
}

}  // namespace

void AddEdeCommand(CLI::App& program, CommandBody& chosen) {
    auto const options = std::make_shared<EdeOptions>();
    CLI::App* const command =
        program.add_subcommand("ede", "Writes a point list of a project or of devices as EDE files");
    DefineEde(*command, *options);
    command->callback([options, &chosen] {
        Check(*options);
        chosen = [options](Streams const& streams) { return WriteList(*options, streams); };
    });
}

}  // namespace workbench
