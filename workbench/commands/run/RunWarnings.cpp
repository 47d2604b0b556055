#include "RunWarnings.h"

#include <string>
#include <vector>

#include "Printable.h"
#include "ProjectCheck.h"

namespace workbench {

namespace {

// What a write does is known before the first one.
std::vector<std::string> WarningsOf(LoadedProject const& project) {
    std::vector<std::string> warnings;
    for (Finding const& finding : FindWritesOf(project.Blocks())) {
        if (finding.code == FindingCode::WriteOtherProperty || finding.code == FindingCode::WriteRefused) {
            warnings.push_back(tools::Printable(finding.block + "." + finding.variable) + ": " +
                               finding.message);
        }
    }
    for (std::string const& name : project.UnusedParams()) {
        warnings.push_back("--define " + tools::Printable(name) + ": the project does not use Param." +
                           tools::Printable(name));
    }
    return warnings;
}

}  // namespace

void Warn(LoadedProject const& project, LogFormat format, LogBuffer& log, std::ostream& err) {
    for (std::string const& warning : WarningsOf(project)) {
        Warn(warning, format, log, err);
    }
}

void Warn(std::string const& warning, LogFormat format, LogBuffer& log, std::ostream& err) {
    if (format == LogFormat::Json) {
        log.Add("warning: " + warning);
    } else {
        err << "warning: " << warning << "\n";
    }
}

}  // namespace workbench
