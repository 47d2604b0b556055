#include "VerifyCommand.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
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
#include "ReportFile.h"
#include "ReportPage.h"
#include "Signals.h"
#include "UdpLink.h"
#include "VerifyJson.h"
#include "VerifyRun.h"
#include "VerifyText.h"

namespace workbench {

namespace {

constexpr std::chrono::milliseconds StopSlice{100};

// A UDP link that a signal stops.
class StoppableLink : public standard::Link {
public:
    explicit StoppableLink(Signals const& stopSignals) : signals(stopSignals), inner(standard::Endpoint{}) {}

    void Send(standard::Datagram const& datagram) override { inner.Send(datagram); }
    std::optional<standard::Datagram> Receive(Time deadline) override {
        std::optional<standard::Datagram> datagram;
        while (!datagram && !IsStopped() && Now() < deadline) {
            datagram = inner.Receive(std::min(deadline, Now() + StopSlice));
        }
        return datagram;
    }
    Time Now() const override { return inner.Now(); }
    bool IsStopped() const override { return signals.IsStopRequested(); }

private:
    Signals const& signals;
    standard::UdpLink inner;
};

// One line on a terminal that is written again and again.
class ProgressLine {
public:
    ProgressLine(std::ostream& lineStream, bool isShownOnTerminal)
        : stream(lineStream), isShown(isShownOnTerminal) {}
    ProgressLine(ProgressLine const&) = delete;
    ProgressLine& operator=(ProgressLine const&) = delete;
    ~ProgressLine() { Clear(); }

    void Show(std::string const& text) {
        if (isShown) {
            stream << "\r\x1B[K" << tools::FitTo(text, std::min(tools::DisplayWidth(text), Width()))
                   << std::flush;
        }
    }
    void Clear() {
        if (isShown) {
            stream << "\r\x1B[K" << std::flush;
        }
    }
    static std::size_t Width(int handle = STDERR_FILENO) {
        winsize size{};
        return ioctl(handle, TIOCGWINSZ, &size) == 0 && size.ws_col > 1 ? size.ws_col - 1u : 79u;
    }

private:
    std::ostream& stream;
    bool isShown;
};

// The page for the acceptance, if one is requested. One that cannot be written is reported before the devices
// are asked.
std::optional<ReportFile> PageOf(Options const& options) {
    if (options.verify.report.empty()) {
        return std::nullopt;
    }
    return std::optional<ReportFile>(std::in_place, options.verify.report, options.project);
}

TextStyle StyleOf(RunStreams const& streams) {
    char const* const noColour = std::getenv("NO_COLOR");
    bool const isPlain = noColour && *noColour != '\0';
    return {streams.outIsTerminal ? ProgressLine::Width(STDOUT_FILENO) : 0,
            streams.outIsTerminal && !isPlain};
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

void Print(VerifyReport const& report, Options const& options, RunStreams const& streams) {
    streams.out << (options.verify.isJson ? VerifyJson(report) : VerifyText(report, StyleOf(streams)))
                << std::flush;
    if (!streams.out) {
        throw std::runtime_error("standard output cannot be written");
    }
}

// Neither output is lost because the other one cannot be written.
void Deliver(VerifyReport const& report, std::optional<ReportFile>& page, Options const& options,
             RunStreams const& streams) {
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

int VerifyProject(Options const& options, RunStreams const& streams) {
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
    StoppableLink link(signals);
    std::optional<ReportFile> page = PageOf(options);
    VerifyReport report = Verify(project, guard, log, link, SettingsOf(options.verify, signals, line));
    line.Clear();
    report.title = options.verify.title.empty() ? options.project : options.verify.title;
    report.project = options.project;
    report.version = WORKBENCH_VERSION;
    report.addIn = options.addIn.empty() ? DefaultAddIn() : options.addIn;
    Deliver(report, page, options, streams);
    return FiguresOf(report).findings == 0 ? tools::WorkbenchExit::Ok : tools::WorkbenchExit::Fault;
}

}  // namespace workbench
