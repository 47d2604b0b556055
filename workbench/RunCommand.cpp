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
#include "RunFigures.h"
#include "Signals.h"

namespace workbench {

namespace {

constexpr std::chrono::milliseconds RefreshPeriod{100};

bool WantsTable(Options const& options, RunStreams const& streams) {
    return options.Format == OutputFormat::Table ||
           (options.Format == OutputFormat::Auto && streams.OutIsTerminal);
}

// A table shares its terminal with the log only in an area of its own.
std::ostream* LogStream(Options const& options, RunStreams const& streams) {
    return WantsTable(options, streams) && streams.ErrIsTerminal ? nullptr : &streams.Err;
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
    if (WantsTable(options, streams)) {
        terminal.Begin();
        return std::make_unique<TableDisplay>(terminal, log, setter, prompt, FirstSnapshots(project));
    }
    if (options.Format == OutputFormat::Json) {
        return std::make_unique<JsonDisplay>(streams.Out);
    }
    streams.Out << LinesHeader();
    return std::make_unique<LinesDisplay>(streams.Out, log);
}

void ServeTerminal(Signals& signals, Terminal& terminal, bool table) {
    if (signals.TakeResized()) {
        terminal.Resized();
    }
    if (signals.TakeSuspendAsked()) {
        terminal.End();
        Signals::Suspend();
        if (table) {
            terminal.Begin();
        }
    }
}

// The threads of the tasks use what the caller holds: they have ended when this has.
struct StopAtEnd {
    dorvel::Runtime& Runtime;
    ~StopAtEnd() { Runtime.Stop(); }
};

void RunUntilEnd(dorvel::Runtime& runtime, Display& display, Terminal& terminal, Signals& signals,
                 Operator& person, Options const& options, bool table) {
    {
        StopAtEnd const stop{runtime};
        person.ServeLines();
        runtime.Start(options.Cycles);
        while (!signals.StopAsked() && !display.Failed() && !runtime.WaitFinished(RefreshPeriod)) {
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

void Warn(LoadedProject const& project, std::ostream& err) {
    for (BlockConfig const& block : project.Blocks()) {
        for (VariableConfig const& variable : block.Variables) {
            if (variable.Write && !IsWrittenItself(variable)) {
                err << "warning: " << Printable(FullName(block, variable)) << ": the driver reads "
                    << variable.Property->Name << " and writes to present-value\n";
            }
        }
    }
    for (std::string const& name : project.UnusedParams()) {
        err << "warning: the project does not ask for Param." << Printable(name) << "\n";
    }
}

BlockConfig const& ConfigOf(LoadedProject const& project, ScadaProtocol const& protocol) {
    for (BlockConfig const& block : project.Blocks()) {
        if (block.Protocol == &protocol) {
            return block;
        }
    }
    throw std::logic_error("the runtime ran a block of nobody");
}

}  // namespace

int RunProject(Options const& options, RunStreams const& streams) {
    LogBuffer log(LogStream(options, streams));
    HostScope const host(log, options.Trace, options.CaptureFile);
    LoadedProject project(options.Project, options.Params);
    project.Load(SourceText::FromFile(options.Project));
    Warn(project, streams.Err);
    ValueSetter setter(project.Runtime(), log);
    SetFromTheStart(project, options.Sets, setter);
    RunFigures figures;

    Signals signals(Terminal::EndAtOnce);
    Terminal terminal(1, 0);
    PromptLine prompt(WritableNames(project.Blocks()));
    std::unique_ptr<Display> const display =
        MakeDisplay(options, streams, project, terminal, log, setter, prompt);
    bool const table = WantsTable(options, streams);
    Operator person(project, setter, *display, prompt, terminal,
                    table && isatty(streams.In) ? -1 : streams.In);
    dorvel::Runtime& runtime = project.Runtime();
    runtime.SetCycleObserver([&](ScadaProtocol& protocol, unsigned long long cycle, bool) {
        if (signals.StopAsked()) {
            return;  // the driver has cut this cycle short, and it is no fault
        }
        BlockSnapshot snapshot = TakeSnapshot(ConfigOf(project, protocol), cycle, runtime.Variables());
        setter.AfterCycle(*snapshot.Config, IsFault(snapshot));
        setter.Show(snapshot);
        figures.Count(snapshot);
        display->Cycle(snapshot);
    });
    RunUntilEnd(runtime, *display, terminal, signals, person, options, table);
    terminal.End();

    if (options.Summary.value_or(table)) {
        // Whoever reads JSON lines from standard output reads nothing else there.
        std::ostream& out = options.Format == OutputFormat::Json ? streams.Err : streams.Out;
        out << figures.Summary(host.Figures()) << std::flush;
    }
    if (!host.CaptureGood()) {
        throw std::runtime_error("the capture file " + options.CaptureFile +
                                 " could not be written to its end");
    }
    if (display->Failed()) {
        throw std::runtime_error("the output could not be written");
    }
    return options.FailOnFault && figures.AnyFault() ? ExitFault : ExitOk;
}

int CheckProject(Options const& options, RunStreams const& streams) {
    LogBuffer log(&streams.Err);
    HostScope const host(log, false, "");
    LoadedProject project(options.Project, options.Params);
    project.Load(SourceText::FromFile(options.Project));
    Warn(project, streams.Err);
    std::size_t variables = 0;
    for (BlockConfig const& block : project.Blocks()) {
        variables += block.Variables.size();
    }
    streams.Out << options.Project << ": no mistake (blocks: " << project.Blocks().size()
                << ", variables: " << variables << ", tasks: " << project.Tasks().size() << ")\n";
    return ExitOk;
}

}  // namespace workbench
