#include "ExportRun.h"

#ifdef WORKBENCH_HAS_RECORD

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstring>
#include <limits>
#include <optional>
#include <ostream>
#include <stdexcept>

#include "ExitCode.h"
#include "OutputFile.h"
#include "PartFile.h"
#include "Printable.h"
#include "ProgressLine.h"
#include "RecordExport.h"
#include "RecordLock.h"
#include "RecordSchema.h"
#include "RecordTime.h"
#include "Signals.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

constexpr std::size_t OctetsAtOnce = 1 << 20;
constexpr unsigned long long ShowEvery = 20000;  // rows

long long TimeOf(char const* option, std::string const& text, long long otherwise) {
    if (text.empty()) {
        return otherwise;
    }
    auto const time = ReadTime(text, RecordTime(dorvel::Environment().Now()));
    if (!time) {
        throw CLI::ValidationError(option,
                                   tools::Quoted(text) +
                                       " is not a time; allowed are 2026-03-01, 2026-03-01T12:00, both "
                                       "also with Z or an offset such as +01:00, -24h, and now");
    }
    return *time;
}

// Standard output, or a file that is there whole or not at all.
class Target {
public:
    Target(ExportOptions const& exportOptions, std::ostream& standardOutput)
        : options(exportOptions), out(standardOutput) {
        if (!options.output.empty()) {
            ExpectWritable(options.output, options.mayReplace);
            part.emplace(options.output);
        }
    }

    void Add(std::string const& more) {
        text += more;
        if (text.size() >= OctetsAtOnce) {
            Flush();
        }
    }

    void Finish() {
        Flush();
        if (part && !part->TakePlace(options.mayReplace)) {
            Fail(errno);
        }
    }

    void Flush() {
        bool const isGood = part ? part->Write(text) : static_cast<bool>(out << text << std::flush);
        if (!isGood) {
            Fail(errno);
        }
        text.clear();
    }

private:
    [[noreturn]] void Fail(int reason) const {
        throw std::runtime_error(part ? tools::Printable(options.output) +
                                            ": cannot be written: " + std::strerror(reason)
                                      : std::string("standard output cannot be written"));
    }

    ExportOptions const& options;
    std::ostream& out;
    std::optional<PartFile> part;
    std::string text;
};

class Exporting {
public:
    Exporting(ExportOptions const& exportOptions, ExportSpan const& exportSpan, Streams const& exportStreams)
        : options(exportOptions),
          span(exportSpan),
          streams(exportStreams),
          format(options.isJson ? RecordFormat::Json : RecordFormat::Csv),
          signals(nullptr),
          reader(options.file),
          progress(streams.err, streams.errIsTerminal && !(options.output.empty() && streams.outIsTerminal)) {
    }

    int Run() {
        if (!options.output.empty() && FileIdentity(options.output) == FileIdentity(options.file)) {
            throw OutputMistake(tools::Printable(options.output) +
                                ": this is the recording; name another file");
        }
        std::vector<RecordedVariable> const variables = Chosen();
        if (!unknown.empty()) {
            return tools::WorkbenchExit::Usage;
        }
        Target target(options, streams.out);
        reader.Hold();
        if (options.isOfEvents) {
            WriteEvents(target);
        } else {
            target.Add(options.isList ? ListHeader(format) : RowsHeader(format));
            for (std::size_t i = 0; i < variables.size() && !signals.IsStopRequested(); ++i) {
                counted = std::to_string(i + 1) + " of " + std::to_string(variables.size()) + " variables, ";
                Write(variables[i], target);
            }
        }
        return Finish(target);
    }

private:
    std::vector<RecordedVariable> Chosen() {
        std::vector<RecordedVariable> variables =
            MatchingVariables(reader.Variables(), options.variables, unknown);
        for (std::string const& pattern : unknown) {
            streams.err << "--variable: " << tools::Quoted(pattern)
                        << " is not recorded; --list shows what is, and * stands for any characters\n";
        }
        return variables;
    }

    void Write(RecordedVariable const& variable, Target& target) {
        if (options.isList) {
            target.Add(ListText(variable, reader.Oldest(variable), reader.Newest(variable), format));
            Count();
            return;
        }
        reader.Read(variable, span.from, span.to, [&](RecordRow const& row) {
            target.Add(RowText(variable, row, format));
            return Count();
        });
    }

    void WriteEvents(Target& target) {
        target.Add(EventsHeader(format));
        reader.ReadEvents(span.from, span.to, [&](RecordedEvent const& event) {
            target.Add(EventText(event, format));
            return Count();
        });
    }

    // False after Ctrl-C.
    bool Count() {
        if (++rows % ShowEvery == 0) {
            progress.Show("export: " + counted + std::to_string(rows) + " rows");
        }
        return !signals.IsStopRequested();
    }

    int Finish(Target& target) {
        progress.Clear();
        if (signals.IsStopRequested()) {
            if (options.output.empty()) {
                target.Flush();
            }
            streams.err << (options.output.empty() ? "not whole: Ctrl-C ended the export\n"
                                                   : "Ctrl-C ended the export; no file is written\n");
            return tools::WorkbenchExit::Fault;
        }
        target.Finish();
        if (!options.output.empty()) {
            streams.out << tools::Printable(options.output) << ": rows: " << rows << "\n";
        }
        return tools::WorkbenchExit::Ok;
    }

    ExportOptions const& options;
    ExportSpan const span;
    Streams const& streams;
    RecordFormat const format;
    Signals signals;
    RecordReader reader;
    ProgressLine progress;
    std::vector<std::string> unknown;
    std::string counted;
    unsigned long long rows = 0;
};

}  // namespace

ExportSpan SpanOf(ExportOptions const& options) {
    ExportSpan const span = {TimeOf("--from", options.from, 0),
                             TimeOf("--to", options.to, std::numeric_limits<long long>::max() / 20000)};
    if (span.from > span.to) {
        throw CLI::ValidationError("--to", tools::Quoted(options.to) + " is before --from");
    }
    return span;
}

int Export(ExportOptions const& options, ExportSpan const& span, Streams const& streams) {
    try {
        return Exporting(options, span, streams).Run();
    } catch (DatabaseError const& mistake) {
        throw std::runtime_error(TroubleOf(options.file, mistake));
    } catch (OutputMistake const& mistake) {
        streams.err << mistake.what() << "\n";
        return tools::WorkbenchExit::Usage;
    }
}

}  // namespace workbench

#endif
