#include "ProjectCheck.h"

#include <algorithm>
#include <new>
#include <tuple>

#include "FindingFamilies.h"
#include "ProjectError.h"
#include "ProjectScript.h"
#include "SourceText.h"
#include "StandInDriver.h"

namespace workbench {

namespace {

void SortByPlace(Findings& findings, std::vector<std::string> const& files) {
    std::map<std::string, std::size_t> ranks;
    for (std::string const& file : files) {
        ranks.emplace(file, ranks.size());
    }
    auto const key = [&](Finding const& finding) {
        auto const rank = ranks.find(finding.where.file);
        return std::make_pair(rank == ranks.end() ? ranks.size() : rank->second, finding.where.line);
    };
    std::stable_sort(findings.begin(), findings.end(),
                     [&](Finding const& left, Finding const& right) { return key(left) < key(right); });
}

ProjectReport Read(std::string const& path, SourceText source,
                   std::map<std::string, std::string> const& params, tools::LuaLimits const& limits) {
    ProjectScript script(path, params, limits, ProjectScript::OnMistake::Collect);
    if (!OpenStandInDriver(script.State()) || !script.InstallNames()) {
        throw std::bad_alloc();
    }
    script.Read(std::move(source), nullptr);
    ProjectReport report{path, script.Mistakes(),     script.Blocks().size(),
                         0,    script.Tasks().size(), script.UnusedParams()};
    for (BlockConfig const& block : script.Blocks()) {
        report.variables += block.variables.size();
        FindDecoding(block, report.findings);
        FindConversions(block, report.findings);
        FindWrites(block, report.findings);
        FindFields(block, report.findings);
        FindShown(block, report.findings);
    }
    FindDuplicates(script.Blocks(), report.findings);
    FindSimilarNames(script.Tasks(), script.Blocks(), report.findings);
    FindTaskLoads(script.Tasks(), script.Blocks(), report.findings);
    SortByPlace(report.findings, script.Files());
    return report;
}

}  // namespace

ProjectReport CheckProject(std::string const& path, std::map<std::string, std::string> const& params,
                           tools::LuaLimits const& limits) {
    try {
        return Read(path, SourceText::FromFile(path), params, limits);
    } catch (ProjectError const& unreadable) {
        ProjectReport report;
        report.path = path;
        std::string message = unreadable.what();
        message.erase(0, message.compare(0, path.size() + 2, path + ": ") == 0 ? path.size() + 2 : 0);
        report.findings.push_back({FindingCode::UnreadableFile, {path, 0}, {}, {}, {}, {}, message, {}});
        return report;
    }
}

ProjectReport CheckProjectText(std::string const& path, std::string const& text,
                               std::map<std::string, std::string> const& params,
                               tools::LuaLimits const& limits) {
    return Read(path, SourceText(text), params, limits);
}

Findings FindWritesOf(std::deque<BlockConfig> const& blocks) {
    Findings findings;
    for (BlockConfig const& block : blocks) {
        FindWrites(block, findings);
    }
    return findings;
}

}  // namespace workbench
