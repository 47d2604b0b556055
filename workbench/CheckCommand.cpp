#include "CheckCommand.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "ExitCode.h"
#include "FindingFormat.h"
#include "Printable.h"
#include "ProjectCheck.h"

namespace workbench {

namespace {

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
void AddUnusedDefines(Options const& options, std::vector<ProjectReport>& reports) {
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
    Findings& findings = reports.front().findings;
    findings.insert(findings.begin(), unused.begin(), unused.end());
}

void Print(ProjectReport const& report, Options const& options, std::ostream& out, bool colours) {
    for (Finding const& finding : report.findings) {
        if (options.format == OutputFormat::Json) {
            out << FindingJson(finding) << "\n";
        } else {
            out << FindingText(finding, colours);
        }
    }
    if (options.format != OutputFormat::Json) {
        out << SummaryText(report);
    }
}

}  // namespace

int CheckProjects(Options const& options, std::ostream& out, bool outIsTerminal) {
    std::vector<ProjectReport> reports;
    for (std::string const& project : options.projects) {
        reports.push_back(CheckProject(project, options.params));
    }
    AddUnusedDefines(options, reports);
    FindingCounts sum;
    for (ProjectReport const& report : reports) {
        Print(report, options, out, WantsColours(outIsTerminal));
        FindingCounts const counts = CountsOf(report.findings);
        sum.errors += counts.errors;
        sum.warnings += counts.warnings;
    }
    if (reports.size() > 1 && options.format != OutputFormat::Json) {
        out << reports.size() << " projects: " << CountsText(sum) << "\n";
    }
    if (!out.flush()) {
        throw std::runtime_error("standard output cannot be written");
    }
    bool const failed = sum.errors > 0 || (options.strict && sum.warnings > 0);
    return failed ? tools::WorkbenchExit::Usage : tools::WorkbenchExit::Ok;
}

}  // namespace workbench
