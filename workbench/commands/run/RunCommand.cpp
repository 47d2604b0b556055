#include "RunCommand.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <ostream>
#include <stdexcept>

#include "AddIn.h"
#include "BuiltParts.h"
#include "CycleWatch.h"
#include "Display.h"
#include "ExitCode.h"
#include "FieldReader.h"
#include "HeldWritesText.h"
#include "HostScope.h"
#include "LoadedProject.h"
#include "Operator.h"
#include "OutletFormat.h"
#include "PlantMemory.h"
#include "RunFigures.h"
#include "RunOutlets.h"
#include "RunPage.h"
#include "RunRecording.h"
#include "RunService.h"
#include "RunWarnings.h"
#include "Signals.h"
#include "TableDisplay.h"

namespace workbench {

namespace {

bool ShowsTable(RunOptions const& options) {
    return options.format == OutputFormat::Table;
}

// Decides on a format once: a window that becomes smaller during the run stays a table.
RunOptions WithFormat(RunOptions options, Streams const& streams) {
    if (options.format == OutputFormat::Auto) {
        bool const isForTable =
            !options.changesBeyond && streams.outIsTerminal && !Terminal(1, 0).IsForLines();
        options.format = isForTable ? OutputFormat::Table : OutputFormat::Lines;
    }
    return options;
}

// Null when the table shows the log: both use the same terminal then.
std::ostream* LogStream(RunOptions const& options, Streams const& streams) {
    return ShowsTable(options) && streams.errIsTerminal ? nullptr : &streams.err;
}

std::vector<SharedSnapshot> FirstSnapshots(LoadedProject& project) {
    std::vector<SharedSnapshot> snapshots;
    for (BlockConfig const& block : project.Blocks()) {
        snapshots.push_back(
            std::make_shared<BlockSnapshot const>(TakeSnapshot(block, 0, project.Runtime().Variables())));
    }
    return snapshots;
}

std::unique_ptr<Display> MakeDisplay(RunOptions const& options, Streams const& streams, Terminal& terminal,
                                     LogBuffer& log, ValueSetter const& setter, PlantMemory const& memory,
                                     LoadedProject const& project, OutletList const& outlets, bool table) {
    if (table) {
        terminal.Begin();
        return std::make_unique<TableDisplay>(terminal, TableSources{memory, setter, log, outlets},
                                              Completions(project.Blocks()));
    }
    if (options.format == OutputFormat::None) {
        return std::make_unique<NoDisplay>(log, memory.events);
    }
    std::optional<ChangeFilter> filter;
    if (options.changesBeyond) {
        filter.emplace(*options.changesBeyond);
    }
    if (options.format == OutputFormat::Json) {
        return std::make_unique<JsonDisplay>(streams.out, outlets, std::move(filter));
    }
    bool const isCsv = options.format == OutputFormat::Csv;
    streams.out << (isCsv ? CsvHeader() : LinesHeader());
    auto const format = isCsv ? TextDisplay::Format(FormatCsv) : TextDisplay::Format(FormatLines);
    return std::make_unique<LinesDisplay>(streams.out, log, format, std::move(filter));
}

void ServeTerminal(Signals& signals, Terminal& terminal, bool table) {
    if (signals.TakeResized()) {
        terminal.Redraw();
    }
    if (signals.TakeSuspendRequest()) {
        terminal.Suspend();
        Signals::Suspend();
    }
    if (table) {
        terminal.Begin();
    }
}

// Stops the runtime when the scope ends: the threads of the tasks use the caller's objects.
struct StopAtEnd {
    dorvel::Runtime& runtime;
    ~StopAtEnd() { runtime.Stop(); }
};

void RunUntilEnd(dorvel::Runtime& runtime, Display& display, Terminal& terminal, Signals& signals,
                 Operator& person, RunPage* page, RunService& service, RunOptions const& options,
                 bool table) {
    {
        StopAtEnd const stop{runtime};
        person.ServeLines();
        runtime.Start(options.cycles);
        service.Begin();
        while (!signals.IsStopRequested() && !display.Failed() &&
               !runtime.WaitFinished(std::min(display.Wait(), service.LongestWait()))) {
            ServeTerminal(signals, terminal, table);
            person.Serve();
            display.Refresh();
            service.Serve();
        }
        service.End();
        if (page) {
            page->End();
        }
    }
    display.Refresh();
}

void SetFromTheStart(LoadedProject& project, std::vector<std::string> const& assignments,
                     ValueSetter& setter) {
    for (SetRequest const& request : project.TakeSets()) {
        setter.Set(request);
    }
    for (std::string const& assignment : assignments) {
        setter.Set(InContext("--set: ", [&] { return ReadAssignment(project.Blocks(), assignment); }));
    }
}

// Plays the standby from the start of a run, and ends that with the run, whatever was typed meanwhile.
struct StandbyScope {
    explicit StandbyScope(bool isOn) { dorvel::SetStandby(isOn); }
    StandbyScope(StandbyScope const&) = delete;
    StandbyScope& operator=(StandbyScope const&) = delete;
    ~StandbyScope() { dorvel::SetStandby(false); }
};

void PrintSummary(RunOptions const& options, Streams const& streams, std::string const& summary) {
    if (options.summary.value_or(ShowsTable(options))) {
        // For programs, standard output has nothing but JSON lines or rows, and with "none" nothing at all.
        bool const isForPeople =
            options.format == OutputFormat::Table || options.format == OutputFormat::Lines;
        std::ostream& out = isForPeople ? streams.out : streams.err;
        out << summary << std::flush;
    }
}

// Nobody should miss what stays in the devices, even without a summary.
void PrintHeldWrites(RunOptions const& options, Streams const& streams, HostScope& host,
                     LoadedProject& project, LogBuffer& log) {
    if (options.summary.value_or(true) && !options.summary.value_or(ShowsTable(options))) {
        for (std::string const& line : HeldWriteLines(host.Observed(), project.Blocks())) {
            Warn(line, options.logFormat, log, streams.err);
        }
    }
}

void CheckOutputs(RunOptions const& options, HostScope const& host, Display const& display) {
    if (!host.CaptureGood()) {
        throw std::runtime_error("the capture file " + options.captureFile +
                                 " is incomplete: writing failed");
    }
    if (display.Failed()) {
        throw std::runtime_error("standard output cannot be written");
    }
}

// Null without --page.
std::unique_ptr<RunPage> StartPage(RunOptions const& options, Streams const& streams,
                                   PagePlant::Parts const& parts) {
    if (!options.page.isOn) {
        return nullptr;
    }
    auto page = std::make_unique<RunPage>(options.page, parts);
    for (std::string const& warning : page->Warnings()) {
        Warn(warning, options.logFormat, parts.log, streams.err);
    }
    page->Start();
    std::string const line = "page: " + page->Link();
    if (options.logFormat == LogFormat::Json || ShowsTable(options)) {
        parts.log.Add(line);
    } else {
        streams.err << line << std::endl;
    }
    return page;
}

int ExitCodeOf(RunOptions const& options, RunFigures const& figures) {
    bool const failed = std::any_of(options.failOn.begin(), options.failOn.end(),
                                    [&](Trouble trouble) { return figures.Has(trouble); });
    return failed ? tools::WorkbenchExit::Fault : tools::WorkbenchExit::Ok;
}

// What a cycle leaves for all that show it, with the state of its writes.
SharedSnapshot EndOfCycle(BlockSnapshot&& snapshot, ValueSetter& setter) {
    setter.AfterCycle(*snapshot.config, IsFault(snapshot) || snapshot.isStandby);
    setter.Show(snapshot);
    return std::make_shared<BlockSnapshot const>(std::move(snapshot));
}

}  // namespace

int RunProject(RunOptions const& given, Streams const& streams) {
    RunOptions const options = WithFormat(given, streams);
    LogBuffer log(LogStream(options, streams), options.logFormat);
    HostScope host(log, options.trace, options.captureFile);
    LoadedProject project(options.project, options.params);
    project.Load(SourceText::FromFile(options.project));
    Warn(project, options.logFormat, log, streams.err);
    StandbyScope const standby(options.standby);
    ValueSetter setter(project.Runtime(), log, &host.Observed());
    SetFromTheStart(project, options.sets, setter);
    RunFigures figures;
    bool const table = ShowsTable(options);
    PlantMemory memory(project.Blocks(), FirstSnapshots(project), table || options.page.isOn);

    Signals signals(Terminal::EndAtOnce);
    Terminal terminal(1, 0);
    OutletList outlets;
    std::unique_ptr<Display> const display =
        MakeDisplay(options, streams, terminal, log, setter, memory, project, outlets, table);
    Operator person(project, setter, *display, table && isatty(streams.in) ? -1 : streams.in);
    AddOutlets(outlets, options,
               {options.project, WORKBENCH_VERSION, project.Blocks(), project.Tasks(), memory, setter, log,
                [&host] { return host.Figures(); }, [&outlets] { return outlets.States(); }});
    CycleWatch const watch(project, host.Observed(), [&](BlockSnapshot& snapshot) {
        if (signals.IsStopRequested()) {
            return;  // the signal interrupted this cycle, which is not a fault
        }
        SharedSnapshot const shared = EndOfCycle(std::move(snapshot), setter);
        figures.Count(shared);
        memory.Follow(shared);
        outlets.Follow(shared);
        display->Cycle(shared);
    });
    std::unique_ptr<RunPage> const page =
        StartPage(options, streams,
                  {options.project, WORKBENCH_VERSION, project.Blocks(), project.Tasks(), memory,
                   outlets.TrendsOr(memory.trends), setter, log, options.page.hasWrites, &outlets});
    RunService service(memory, outlets);
    outlets.Start();
    RunUntilEnd(project.Runtime(), *display, terminal, signals, person, page.get(), service, options, table);
    outlets.End();
    display->Refresh();
    if (terminal.End()) {
        PrintSummary(options, streams,
                     figures.Summary(host.Figures()) + OutletLines(outlets.States()) +
                         HeldWritesText(host.Observed(), project.Blocks()));
    }
    PrintHeldWrites(options, streams, host, project, log);
    CheckOutputs(options, host, *display);
    return ExitCodeOf(options, figures);
}

void AddRunCommand(CLI::App& program, CommandBody& chosen) {
    auto const options = std::make_shared<RunOptions>();
    CLI::App* const command = program.add_subcommand("run", "Runs a project");
    DefineRun(*command, *options);
    command->callback([options, &chosen] {
        RefuseMissingParts(*options);
        CheckMqttOptions(options->mqtt);
        CheckRecordOptions(options->record);
        chosen = [options](Streams const& streams) {
            LoadAddIn(AddInOf(*options));
            return RunProject(*options, streams);
        };
    });
}

}  // namespace workbench
