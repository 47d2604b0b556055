#include "CommandLine.h"

#include <CLI/CLI.hpp>

#include "BrowseCommand.h"
#include "CheckCommand.h"
#include "CompareCommand.h"
#include "DiscoverCommand.h"
#include "EdeCommand.h"
#include "ExitCode.h"
#include "ExportCommand.h"
#include "NamesCommand.h"
#include "NewCommand.h"
#include "ReleaseCommand.h"
#include "RunCommand.h"
#include "VerifyCommand.h"
#include "Version.h"

namespace workbench {

namespace {

constexpr char ProgramHelp[] = R"(Examples:
  dorvel-workbench discover
  dorvel-workbench browse 192.168.1.20
  dorvel-workbench new plant.lua --from discover
  dorvel-workbench check plant.lua
  dorvel-workbench check --strict --format json *.lua
  dorvel-workbench run examples/first-steps.lua
  dorvel-workbench run plant.lua --define ahu=192.168.1.20:47808 --pcap plant.pcap
  dorvel-workbench run plant.lua --format json --cycles 10 --fail-on fault,suspect,overrun
  dorvel-workbench run plant.lua --set "AHU.Supply air setpoint=21.5"
  dorvel-workbench verify plant.lua --report acceptance.html
  dorvel-workbench ede 192.168.1.20 -o plant
  dorvel-workbench compare plant_EDE.csv plant.lua
  dorvel-workbench release 192.168.1.20 analog-output 1 --priority 8
  dorvel-workbench export plant.sqlite --from -24h -o yesterday.csv
  dorvel-workbench names

Exit codes:
  0  done, also after Ctrl-C
  1  a condition of --fail-on was met, or a block was in fault at the end, with --fail-on-fault;
     verify: there are findings; new: not everything could be read; compare: there are differences;
     ede: the list is not whole; export: Ctrl-C ended it
  2  a mistake on the command line or in the project; check: an error, or a warning with --strict
  3  the add-in cannot be loaded
  4  something else failed, such as writing the capture file
  130  a second Ctrl-C ended the program at once)";

// In the order of the help.
constexpr AddCommand Commands[] = {
    AddDiscoverCommand, AddBrowseCommand, AddNewCommand,   AddCheckCommand,
    AddRunCommand,      AddVerifyCommand, AddEdeCommand,   AddCompareCommand,
    AddReleaseCommand,  AddExportCommand, AddNamesCommand,
};

}  // namespace

void DefineProgram(CLI::App& program, CommandBody& chosen) {
    program.name("dorvel-workbench");
    program.description(
        "Brings BACnet devices into service from a PC: finds them, writes, checks, runs and verifies "
        "projects.");
    program.set_version_flag("--version", tools::VersionText("dorvel-workbench"));
    program.require_subcommand(1);
    program.footer(ProgramHelp);
    for (AddCommand const add : Commands) {
        add(program, chosen);
    }
}

CommandBody ReadCommandLine(int argc, char const* const* argv, std::ostream& out, std::ostream& err,
                            int& exitCode) {
    CommandBody chosen;
    CLI::App app;
    DefineProgram(app, chosen);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& end) {
        exitCode = app.exit(end, out, err) == 0 ? tools::WorkbenchExit::Ok : tools::WorkbenchExit::Usage;
        return {};
    }
    return chosen;
}

}  // namespace workbench
