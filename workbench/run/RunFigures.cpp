#include "RunFigures.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include "Printable.h"
#include "SetRequest.h"

namespace workbench {

namespace {

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

}  // namespace

void RunFigures::Count(BlockSnapshot const& block) {
    bool const fault = IsFault(block);
    unsigned long long const polled = fault ? 0 : ObjectCount(*block.config);
    std::lock_guard<std::mutex> const lock(mutex);
    ++cycles;
    faults += fault ? 1 : 0;
    objects += polled;
    inFault[block.config] = fault;
    for (VariableSnapshot const& variable : block.variables) {
        if (variable.write.stage != WriteStage::None) {
            writes[FullName(*block.config, *variable.config)] =
                WriteText(variable.write, block.localDiff, true);
        }
    }
}

bool RunFigures::AnyFault() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return std::any_of(inFault.begin(), inFault.end(), [](auto const& block) { return block.second; });
}

std::string RunFigures::Summary(TrafficFigures const& traffic) const {
    std::lock_guard<std::mutex> const lock(mutex);
    std::string text = Line("cycles", cycles, "") +
                       Line("faults", faults, "  (cycles of a block that ended in fault)") +
                       Line("objects polled", objects, "  (in cycles without fault)") +
                       Line("requests", traffic.requests, "") + Line("answers", traffic.answers, "") +
                       RoundTripLine(traffic.trips);
    for (auto const& [name, state] : writes) {
        text += tools::Printable(name) + " = " + state + "\n";
    }
    return text;
}

}  // namespace workbench
