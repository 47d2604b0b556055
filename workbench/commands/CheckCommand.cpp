#include "CheckCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "ExitCode.h"
#include "FindingFormat.h"
#include "Printable.h"
#include "ProjectCheck.h"

namespace workbench {

namespace {

constexpr char CheckHelp[] =
    R"(Reports everything in the projects that is wrong or will surprise, in the order of their lines:
errors are points and blocks that cannot work, warnings those that work but not always as meant.
Needs no network and no device, and does not run the driver. Functions of After are not called.
Each finding has a code; docs/findings.md has its cause, effect and cure.

Text has a line for each finding, and below it what to do. With --format json each finding is one
object on one line with severity, code, file, line, block, variable, field, message and advice; what
a finding does not have is null.

Examples:
  dorvel-workbench check plant.lua
  dorvel-workbench check plant.lua --define ahu=192.168.1.20:47808
  dorvel-workbench check --strict --format json *.lua

Exit codes:
  0  no error, and with --strict no warning
  2  an error, or with --strict a warning; or a mistake on the command line
  4  the output cannot be written)";

bool WantsColours(bool isTerminal) {
    char const* const refusal = std::getenv("NO_COLOR");
    char const* const terminal = std::getenv("TERM");
    bool const isDumb = terminal && std::string_view(terminal) == "dumb";
    return isTerminal && !isDumb && (!refusal || *refusal == '\0');
}

// True unless a mistake has ended the script, which may have used the parameter later.
bool WasReadToItsEnd(ProjectReport const& report) {
    return std::none_of(report.findings.begin(), report.findings.end(), [](Finding const& finding) {
        return finding.code == FindingCode::ScriptError || finding.code == FindingCode::UnreadableFile;
    });
}

bool Uses(ProjectReport const& report, std::string const& param) {
    auto const& unused = report.unusedParams;
    return !WasReadToItsEnd(report) || std::find(unused.begin(), unused.end(), param) == unused.end();
}

// A --define that no project uses is a finding about the first one.
Findings UnusedDefines(CheckOptions const& options, std::vector<ProjectReport> const& reports) {
    Findings unused;
    for (auto const& param : options.params) {
        std::string const& name = param.first;
        if (std::none_of(reports.begin(), reports.end(),
                         [&](ProjectReport const& report) { return Uses(report, name); })) {
            unused.push_back(
                {FindingCode::UnusedDefine,
                 {reports.front().path, 0},
                 {},
                 {},
                 {},
                 {},
                 "--define " + tools::Quoted(name) + ": no project uses Param." + tools::Printable(name),
                 {}});
        }
    }
    return unused;
}

// Prints findings as they come: a project that does not end ends the process.
class Printer {
public:
    Printer(CheckOptions const& checkOptions, std::ostream& output, bool isTerminal)
        : options(checkOptions), out(output), colours(WantsColours(isTerminal)) {}

    void Print(Findings const& findings) {
        for (Finding const& finding : findings) {
            out << (options.isJson ? FindingJson(finding) + "\n" : FindingText(finding, colours));
        }
        FindingCounts const counts = CountsOf(findings);
        sum.errors += counts.errors;
        sum.warnings += counts.warnings;
        if (!out.flush()) {
            throw std::runtime_error("standard output cannot be written");
        }
    }

    void Print(std::string const& line) {
        if (!options.isJson) {
            out << line << std::flush;
        }
    }

    FindingCounts const& Sum() const { return sum; }

private:
    CheckOptions const& options;
    std::ostream& out;
    bool colours;
    FindingCounts sum;
};

}  // namespace

int CheckProjects(CheckOptions const& options, std::ostream& out, bool outIsTerminal) {
    Printer printer(options, out, outIsTerminal);
    std::vector<ProjectReport> reports;
    for (std::string const& project : options.projects) {
        reports.push_back(CheckProject(project, options.params));
        printer.Print(reports.back().findings);
        printer.Print(SummaryText(reports.back()));
    }
    Findings const unused = UnusedDefines(options, reports);
    printer.Print(unused);
    FindingCounts const& sum = printer.Sum();
    if (reports.size() > 1 || !unused.empty()) {
        printer.Print(CountsText(reports.size(), sum));
    }
    if (!out) {
        throw std::runtime_error("standard output cannot be written");
    }
    bool const failed = sum.errors > 0 || (options.strict && sum.warnings > 0);
    return failed ? tools::WorkbenchExit::Usage : tools::WorkbenchExit::Ok;
}

void DefineCheck(CLI::App& command, CheckOptions& options) {
    command.add_option("PROJECT", options.projects, "The projects, Lua files")->required();
    AddDefineOption(command, options.params);
    AddFormatOption(command, options.isJson);
    command.add_flag("--strict", options.strict, "Warnings count as errors");
    command.footer(CheckHelp);
}

void AddCheckCommand(CLI::App& program, CommandBody& chosen) {
    auto const options = std::make_shared<CheckOptions>();
    CLI::App* const command = program.add_subcommand("check", "Checks projects without a device");
    DefineCheck(*command, *options);
    command->callback([options, &chosen] {
        chosen = [options](Streams const& streams) {
            return CheckProjects(*options, streams.out, streams.outIsTerminal);
        };
    });
}

}  // namespace workbench
