#include "RunFigures.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <set>

#include "Printable.h"
#include "SetRequest.h"
#include "TimeText.h"

namespace workbench {

namespace {

// In the order of Trouble.
constexpr char const* Names[] = {"fault",       "refused", "pending", "differs",
                                 "unconfirmed", "suspect", "overrun"};

// The driver reads all properties of an object in one request.
unsigned long long ObjectCount(BlockConfig const& block) {
    std::set<std::pair<int, int>> objects;
    for (VariableConfig const& variable : block.variables) {
        objects.emplace(variable.objectType->code, variable.objectNumber);
    }
    return objects.size();
}

std::string Line(char const* name, unsigned long long count, char const* remark) {
    char text[128];
    std::snprintf(text, sizeof text, "%-15s %7llu%s\n", name, count, remark);
    return text;
}

std::string RoundTripLine(RoundTrips const& trips) {
    if (trips.Count() == 0) {
        return "round trip            - (no answer came)\n";
    }
    char text[128];
    std::snprintf(text, sizeof text, "round trip      %7.3f ms median, %.3f ms maximum\n",
                  static_cast<double>(trips.Median()) / 1e4, static_cast<double>(trips.Maximum()) / 1e4);
    return text;
}

std::string TimesLine(BlockSnapshot const& block) {
    CycleFigures const& times = block.times;
    return tools::Printable(block.config->name) + ": cycle " + DurationText(times.median) + " median, " +
           DurationText(times.maximum) + " maximum, " + std::to_string(times.overruns) +
           (times.overruns == 1 ? " overrun\n" : " overruns\n");
}

std::string CauseLines(BlockSnapshot const& block) {
    std::string lines;
    for (Cause const& cause : block.causes) {
        lines += tools::Printable(block.config->name) + ": " + tools::Printable(cause.text) + "\n";
    }
    return lines;
}

std::string SuspectLines(BlockSnapshot const& block) {
    std::string lines;
    for (VariableSnapshot const& variable : block.variables) {
        if (!variable.suspect.empty()) {
            lines += tools::Printable(FullName(*block.config, *variable.config)) + ": suspect, " +
                     tools::Printable(variable.suspect) + "\n";
        }
    }
    return lines;
}

std::string WriteLines(BlockSnapshot const& block) {
    std::string lines;
    for (VariableSnapshot const& variable : block.variables) {
        if (variable.write.stage != WriteStage::None) {
            lines += tools::Printable(FullName(*block.config, *variable.config)) + " = " +
                     WriteText(*variable.config, variable.write, block.localDiff, true) + "\n";
        }
    }
    return lines;
}

bool HasVariable(BlockSnapshot const& block, Trouble trouble) {
    return std::any_of(block.variables.begin(), block.variables.end(), [=](VariableSnapshot const& variable) {
        return trouble == Trouble::Suspect
                   ? !variable.suspect.empty()
                   : StageName(variable.write.stage) == std::string_view(Names[static_cast<int>(trouble)]);
    });
}

bool HasBlock(BlockSnapshot const& block, Trouble trouble) {
    switch (trouble) {
        case Trouble::Fault:
            return IsFault(block);
        case Trouble::Overrun:
            return block.times.overruns > 0;
        default:
            return HasVariable(block, trouble);
    }
}

}  // namespace

std::optional<Trouble> TroubleOfName(std::string_view name) {
    auto const found = std::find(std::begin(Names), std::end(Names), name);
    return found == std::end(Names) ? std::nullopt
                                    : std::optional(static_cast<Trouble>(found - std::begin(Names)));
}

std::vector<std::string> TroubleNames() {
    return {std::begin(Names), std::end(Names)};
}

void RunFigures::Count(SharedSnapshot const& block) {
    bool const fault = IsFault(*block);
    unsigned long long const polled = fault || block->isStandby ? 0 : ObjectCount(*block->config);
    std::lock_guard<std::mutex> const lock(mutex);
    ++cycles;
    faults += fault ? 1 : 0;
    objects += polled;
    latest[block->config->name] = block;
}

bool RunFigures::Has(Trouble trouble) const {
    std::lock_guard<std::mutex> const lock(mutex);
    return std::any_of(latest.begin(), latest.end(),
                       [=](auto const& block) { return HasBlock(*block.second, trouble); });
}

std::string RunFigures::Summary(TrafficFigures const& traffic) const {
    std::lock_guard<std::mutex> const lock(mutex);
    std::string text = Line("cycles", cycles, "") +
                       Line("faults", faults, "  (cycles of a block that ended in fault)") +
                       Line("objects polled", objects, "  (in cycles without fault)") +
                       Line("requests", traffic.requests, "") + Line("answers", traffic.answers, "") +
                       RoundTripLine(traffic.trips);
    for (auto const lines : {TimesLine, CauseLines, SuspectLines, WriteLines}) {
        for (auto const& block : latest) {
            text += lines(*block.second);
        }
    }
    return text;
}

}  // namespace workbench
