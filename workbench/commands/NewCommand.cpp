#include "NewCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <ostream>
#include <stdexcept>

#include "DeviceFileWriter.h"
#include "ExitCode.h"
#include "OutputFile.h"
#include "PlantSource.h"
#include "Printable.h"
#include "ProjectError.h"
#include "ProjectWriter.h"

namespace workbench {

namespace {

namespace fs = std::filesystem;

constexpr char NewHelp[] =
    R"(Writes a project that passes check and runs as it is: a block and a task for each device, a variable
for each object that the driver can read, with units and state texts. What the driver cannot read is
a comment with the reason. With --devices it writes a file of the simulator for each device: a clone
of the plant to work with at the desk. Nothing is written to any device.

SOURCE is one of:
  discover           every device that answers a broadcast
  ADDRESS...         devices: 192.168.1.20, 192.168.1.20:47809, or behind a router 192.168.1.1,5:10:20
  FILE_EDE.csv       a point list; the addresses come from --addresses and -D

Ctrl-C ends the reading and writes what was read. Files that are there stay, unless --force is given.

Examples:
  dorvel-workbench new plant.lua --from discover
  dorvel-workbench new plant.lua --from 192.168.1.20 192.168.1.1,5:10:20 --writable
  dorvel-workbench new plant.lua --from plant_EDE.csv -D 1001=192.168.1.20 -D 2001=192.168.1.1,5:10:20
  dorvel-workbench new --devices clone --from discover

Exit codes:
  0  done
  1  written, but not whole: Ctrl-C, a device that did not answer, a row of a point list that cannot
     be used; too large for descriptions; or no device has an object that the driver can read, and no
     project is written
  2  a mistake on the command line or in a file; a file is there already
  4  something else failed, such as writing a file
  130  a second Ctrl-C ended the program at once)";

struct NewOptions {
    std::string project;  // empty: none
    std::string devices;  // a folder; empty: none
    SourceOptions source;
    bool isWritable = false;
    bool force = false;
};

std::string Counted(std::size_t count, std::string const& what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

// As an argument in a shell.
std::string Argument(std::string const& path) {
    bool const isPlain = std::all_of(path.begin(), path.end(), [](unsigned char c) {
        return std::isalnum(c) != 0 || c == '/' || c == '.' || c == '-' || c == '_' || c >= 0x80;
    });
    std::string quoted;
    for (char const c : path) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return isPlain ? path : '\'' + quoted + '\'';
}

// True if it was written.
bool MakeProject(NewOptions const& options, PlantReading const& plant, Streams const& streams) {
    ProjectStyle style;
    style.isFromDevices = plant.isFromDevices;
    style.isWritable = options.isWritable;
    style.isPartial = !plant.isWhole;
    ProjectText project = WriteProject(plant.inventory, style);
    if (!project.isLoadable) {
        style.isBrief = true;
        project = WriteProject(plant.inventory, style);
        streams.err << tools::Printable(options.project)
                    << ": without descriptions and Point, which would make it too large\n";
    }
    if (!project.isLoadable) {
        throw OutputMistake(
            tools::Printable(options.project) +
            " is not written: the plant is too large for one "
            "project of 16 MB and 500,000 values in a block; name fewer devices, or a --range");
    }
    for (std::string const& device : project.leftOut) {
        streams.err << tools::Printable(device) << "; it is not polled\n";
    }
    if (project.blocks == 0) {
        streams.err << tools::Printable(options.project)
                    << " is not written: no device has an object that the driver can read\n";
        return false;
    }
    WriteOutput(options.project, project.text, options.force);
    std::string const path = Argument(options.project);
    streams.out << tools::Printable(options.project) << ": " << Counted(project.blocks, "block") << ", "
                << Counted(project.variables, "variable") << " (" << project.written << " can be written), "
                << Counted(project.comments, "object") << " not read\n"
                << "  dorvel-workbench check " << path << "\n  dorvel-workbench run " << path << "\n";
    return project.leftOut.empty() && !style.isBrief;
}

void MakeDevices(NewOptions const& options, PlantReading const& plant, Streams const& streams) {
    std::vector<DeviceFile> const files = WriteDeviceFiles(plant.inventory);
    fs::create_directories(options.devices);
    for (DeviceFile const& file : files) {
        ExpectWritable((fs::path(options.devices) / file.name).string(), options.force);
    }
    std::size_t objects = 0;
    for (DeviceFile const& file : files) {
        WriteOutput((fs::path(options.devices) / file.name).string(), file.text, options.force);
        objects += file.objects;
        for (std::string const& reason : file.leftOut) {
            streams.err << file.name << ": not copied: " << tools::Printable(reason) << "\n";
        }
    }
    streams.out << tools::Printable(options.devices) << ": " << Counted(files.size(), "device file") << ", "
                << Counted(objects, "object") << "\n";
    streams.out << "  bacnet-simulator";
    for (DeviceFile const& file : files) {
        streams.out << ' ' << Argument((fs::path(options.devices) / file.name).string());
    }
    streams.out << "\n";
}

void CheckOutputs(NewOptions const& options) {
    if (!options.project.empty()) {
        ExpectWritable(options.project, options.force);
    }
    if (!options.devices.empty() && fs::exists(options.devices) && !fs::is_directory(options.devices)) {
        throw OutputMistake(tools::Printable(options.devices) + ": this is a file; name a folder");
    }
}

int MakeAll(NewOptions const& options, Streams const& streams) {
    CheckOutputs(options);
    PlantReading const plant = ReadPlant(options.source, streams);
    bool isWhole = plant.isWhole;
    if (!options.project.empty()) {
        isWhole = MakeProject(options, plant, streams) && isWhole;
    }
    if (!options.devices.empty()) {
        MakeDevices(options, plant, streams);
    }
    if (!streams.out.flush()) {
        throw std::runtime_error("standard output cannot be written");
    }
    return isWhole ? tools::WorkbenchExit::Ok : tools::WorkbenchExit::Fault;
}

void CheckOptions(NewOptions const& options) {
    if (options.project.empty() && options.devices.empty()) {
        throw CLI::ValidationError("PROJECT.lua",
                                   "what is to be written: name a project, or --devices FOLDER, or both");
    }
    CheckSource(options.source);
    if (!options.devices.empty() && IsPointList(options.source)) {
        throw CLI::ValidationError("--devices", "a point list has no values; name the devices in --from");
    }
}

void DefineNew(CLI::App& command, NewOptions& options) {
    command.add_option("PROJECT.lua", options.project, "The project to be written");
    command.add_option("--devices", options.devices, "Writes a device file of the simulator for each device")
        ->type_name("FOLDER");
    AddSourceOptions(command, options.source);
    command.add_flag("--writable", options.isWritable,
                     "Variables that the driver and the device can write get Write = true");
    command.add_flag("--force", options.force, "Replaces files that are there");
    command.footer(NewHelp);
}

}  // namespace

void AddNewCommand(CLI::App& program, CommandBody& chosen) {
    auto const options = std::make_shared<NewOptions>();
    CLI::App* const command =
        program.add_subcommand("new", "Writes a project, or a clone for the simulator, from a plant");
    DefineNew(*command, *options);
    command->callback([options, &chosen] {
        CheckOptions(*options);
        chosen = [options](Streams const& streams) {
            try {
                return MakeAll(*options, streams);
            } catch (OutputMistake const& mistake) {
                throw ProjectError(mistake.what());
            }
        };
    });
}

}  // namespace workbench
