#include "VerifyCommand.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "AddIn.h"
#include "ExitCode.h"
#include "HostScope.h"
#include "LoadedProject.h"
#include "PollGuard.h"
#include "Printable.h"
#include "ProgressLine.h"
#include "ReportFile.h"
#include "ReportPage.h"
#include "Signals.h"
#include "StoppableLink.h"
#include "UdpLink.h"
#include "VerifyJson.h"
#include "VerifyRun.h"
#include "VerifyText.h"

namespace workbench {

namespace {

constexpr char VerifyHelp[] =
    R"(Reads every variable twice: by the driver, and before and after it from the device by the BACnet
standard. Each gets a verdict, such as agrees, moving, differs or no such object. Nothing is written:
variables have no write channels, and Set and After have no effect. Ctrl-C ends the run and prints
what was done.

Examples:
  dorvel-workbench verify plant.lua
  dorvel-workbench verify plant.lua --rounds 20 --format json
  dorvel-workbench verify plant.lua --report acceptance.html --title "North wing, level 2"

Exit codes:
  0  no findings
  1  findings, also when Ctrl-C has ended it before all points were compared
  2  a mistake on the command line or in the project
  3  the add-in cannot be loaded
  4  something else failed, such as writing the report
  130  a second Ctrl-C ended the program at once)";

// The page for the acceptance, if one is requested. One that cannot be written is reported before the devices
// are asked.
std::optional<ReportFile> PageOf(VerifyOptions const& options) {
    if (options.report.empty()) {
        return std::nullopt;
    }
    return std::optional<ReportFile>(std::in_place, options.report, options.project);
}

TextStyle StyleOf(Streams const& streams) {
    char const* const noColour = std::getenv("NO_COLOR");
    bool const isPlain = noColour && *noColour != '\0';
    return {streams.outIsTerminal ? TerminalWidth(STDOUT_FILENO) : 0, streams.outIsTerminal && !isPlain};
}

VerifySettings SettingsOf(VerifyOptions const& options, Signals& signals, ProgressLine& line) {
    VerifySettings settings;
    settings.client.timeout = std::chrono::milliseconds(options.timeout);
    settings.client.segmentTimeout = std::min(settings.client.timeout, settings.client.segmentTimeout);
    settings.client.retries = options.retries;
    settings.rounds = options.rounds;
    settings.progress = [&](std::string const& text) {
        if (signals.TakeSuspendRequest()) {
            line.Clear();
            Signals::Suspend();
        }
        line.Show(text);
    };
    return settings;
}

void WarnOfUnusedParams(LoadedProject const& project, std::ostream& err) {
    for (std::string const& name : project.UnusedParams()) {
        err << "warning: --define " << tools::Printable(name) << ": the project does not use Param."
            << tools::Printable(name) << "\n";
    }
}

void Print(VerifyReport const& report, VerifyOptions const& options, Streams const& streams) {
    streams.out << (options.isJson ? VerifyJson(report) : VerifyText(report, StyleOf(streams))) << std::flush;
    if (!streams.out) {
        throw std::runtime_error("standard output cannot be written");
    }
}

// Neither output is lost because the other one cannot be written.
void Deliver(VerifyReport const& report, std::optional<ReportFile>& page, VerifyOptions const& options,
             Streams const& streams) {
    try {
        if (page) {
            page->Write(ReportPage(report));
        }
    } catch (std::runtime_error const&) {
        Print(report, options, streams);
        throw;
    }
    Print(report, options, streams);
}

}  // namespace

int VerifyProject(VerifyOptions const& options, Streams const& streams) {
    Signals signals(nullptr);
    ProgressLine line(streams.err, streams.errIsTerminal);
    LogBuffer log(nullptr);
    PollGuard guard(dorvel::Environment(), [&signals] { return signals.IsStopRequested(); });
    EnvironmentScope const environment(guard);
    HostScope const host(log, false, "");
    LoadedProject project(options.project, options.params);
    project.RemoveWrites();
    project.Load(SourceText::FromFile(options.project));
    WarnOfUnusedParams(project, streams.err);
    standard::UdpLink socket{standard::Endpoint{}};
    StoppableLink link(socket, [&signals] { return signals.IsStopRequested(); });
    std::optional<ReportFile> page = PageOf(options);
    VerifyReport report = Verify(project, guard, log, link, SettingsOf(options, signals, line));
    line.Clear();
    report.title = options.title.empty() ? options.project : options.title;
    report.project = options.project;
    report.version = WORKBENCH_VERSION;
    report.addIn = AddInOf(options);
    Deliver(report, page, options, streams);
    return FiguresOf(report).findings == 0 ? tools::WorkbenchExit::Ok : tools::WorkbenchExit::Fault;
}

void DefineVerify(CLI::App& command, VerifyOptions& options) {
    AddProjectOptions(command, options);
    AddFormatOption(command, options.isJson);
    command.add_option("--report", options.report, "Writes a page for the acceptance")
        ->type_name("FILE.html");
    command.add_option("--title", options.title, "The title of the page (default: the project's path)")
        ->type_name("TEXT");
    command.add_option("--rounds", options.rounds, "Compares all variables N times (default: 1)")
        ->type_name("N")
        ->check(CLI::Range(1ULL, 1000000ULL).description(""));
    AddWaitOptions(command, options.timeout, options.retries, ", without the driver");
    command.footer(VerifyHelp);
}

void AddVerifyCommand(CLI::App& program, CommandBody& chosen) {
    auto const options = std::make_shared<VerifyOptions>();
    CLI::App* const command =
        program.add_subcommand("verify", "Compares the driver's values with the devices");
    DefineVerify(*command, *options);
    command->callback([options, &chosen] {
        chosen = [options](Streams const& streams) {
            LoadAddIn(AddInOf(*options));
            return VerifyProject(*options, streams);
        };
    });
}

}  // namespace workbench
