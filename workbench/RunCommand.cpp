#include "RunCommand.h"

#include <unistd.h>

#include <chrono>
#include <ostream>
#include <stdexcept>

#include "Display.h"
#include "ExitCode.h"
#include "FieldReader.h"
#include "HostScope.h"
#include "LoadedProject.h"
#include "Operator.h"
#include "Printable.h"
#include "ProjectCheck.h"
#include "RunFigures.h"
#include "Signals.h"

namespace workbench {

namespace {

constexpr std::chrono::milliseconds RefreshPeriod{100};

bool ShowsTable(Options const& options, RunStreams const& streams) {
    return options.format == OutputFormat::Table ||
           (options.format == OutputFormat::Auto && streams.outIsTerminal);
}

// Null when the table shows the log: both use the same terminal then.
std::ostream* LogStream(Options const& options, RunStreams const& streams) {
    return ShowsTable(options, streams) && streams.errIsTerminal ? nullptr : &streams.err;
}

std::vector<BlockSnapshot> FirstSnapshots(LoadedProject& project) {
    std::vector<BlockSnapshot> snapshots;
    for (BlockConfig const& block : project.Blocks()) {
        snapshots.push_back(TakeSnapshot(block, 0, project.Runtime().Variables()));
    }
    return snapshots;
}

std::unique_ptr<Display> MakeDisplay(Options const& options, RunStreams const& streams,
                                     LoadedProject& project, Terminal& terminal, LogBuffer& log,
                                     ValueSetter const& setter, PromptLine const& prompt) {
    if (ShowsTable(options, streams)) {
        terminal.Begin();
        return std::make_unique<TableDisplay>(terminal, log, setter, prompt, FirstSnapshots(project));
    }
    if (options.format == OutputFormat::Json) {
        return std::make_unique<JsonDisplay>(streams.out);
    }
    streams.out << LinesHeader();
    return std::make_unique<LinesDisplay>(streams.out, log);
}

void ServeTerminal(Signals& signals, Terminal& terminal, bool table) {
    if (signals.TakeResized()) {
        terminal.Resized();
    }
    if (signals.TakeSuspendRequest()) {
        terminal.End();
        Signals::Suspend();
        if (table) {
            terminal.Begin();
        }
    }
}

// Stops the runtime when the scope ends: the threads of the tasks use the caller's objects.
struct StopAtEnd {
    dorvel::Runtime& runtime;
    ~StopAtEnd() { runtime.Stop(); }
};

void RunUntilEnd(dorvel::Runtime& runtime, Display& display, Terminal& terminal, Signals& signals,
                 Operator& person, Options const& options, bool table) {
    {
        StopAtEnd const stop{runtime};
        person.ServeLines();
        runtime.Start(options.cycles);
        while (!signals.IsStopRequested() && !display.Failed() && !runtime.WaitFinished(RefreshPeriod)) {
            ServeTerminal(signals, terminal, table);
            person.Serve();
            display.Refresh();
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

// What a write does is known before the first one.
void Warn(LoadedProject const& project, std::ostream& err) {
    for (Finding const& finding : FindWritesOf(project.Blocks())) {
        if (finding.code == FindingCode::WriteOtherProperty || finding.code == FindingCode::WriteRefused) {
            err << "warning: " << tools::Printable(finding.block + "." + finding.variable) << ": "
                << finding.message << "\n";
        }
    }
    for (std::string const& name : project.UnusedParams()) {
        err << "warning: --define " << tools::Printable(name) << ": the project does not use Param."
            << tools::Printable(name) << "\n";
    }
}

BlockConfig const& ConfigOf(LoadedProject const& project, ScadaProtocol const& protocol) {
    for (BlockConfig const& block : project.Blocks()) {
        if (block.protocol == &protocol) {
            return block;
        }
    }
    throw std::logic_error("the runtime ran a block that is not part of the project");
}

}  // namespace

int RunProject(Options const& options, RunStreams const& streams) {
    LogBuffer log(LogStream(options, streams));
    HostScope const host(log, options.trace, options.captureFile);
    LoadedProject project(options.project, options.params);
    project.Load(SourceText::FromFile(options.project));
    Warn(project, streams.err);
    ValueSetter setter(project.Runtime(), log);
    SetFromTheStart(project, options.sets, setter);
    RunFigures figures;

    Signals signals(Terminal::EndAtOnce);
    Terminal terminal(1, 0);
    PromptLine prompt(WritableNames(project.Blocks()));
    std::unique_ptr<Display> const display =
        MakeDisplay(options, streams, project, terminal, log, setter, prompt);
    bool const table = ShowsTable(options, streams);
    Operator person(project, setter, *display, prompt, terminal,
                    table && isatty(streams.in) ? -1 : streams.in);
    dorvel::Runtime& runtime = project.Runtime();
    runtime.SetCycleObserver([&](ScadaProtocol& protocol, unsigned long long cycle, bool) {
        if (signals.IsStopRequested()) {
            return;  // the signal interrupted this cycle, which is not a fault
        }
        BlockSnapshot snapshot = TakeSnapshot(ConfigOf(project, protocol), cycle, runtime.Variables());
        setter.AfterCycle(*snapshot.config, IsFault(snapshot));
        setter.Show(snapshot);
        figures.Count(snapshot);
        display->Cycle(snapshot);
    });
    RunUntilEnd(runtime, *display, terminal, signals, person, options, table);
    terminal.End();

    if (options.summary.value_or(table)) {
        // With JSON, standard output has nothing but JSON lines.
        std::ostream& out = options.format == OutputFormat::Json ? streams.err : streams.out;
        out << figures.Summary(host.Figures()) << std::flush;
    }
    if (!host.CaptureGood()) {
        throw std::runtime_error("the capture file " + options.captureFile +
                                 " is incomplete: writing failed");
    }
    if (display->Failed()) {
        throw std::runtime_error("standard output cannot be written");
    }
    return options.failOnFault && figures.AnyFault() ? tools::WorkbenchExit::Fault : tools::WorkbenchExit::Ok;
}

}  // namespace workbench
