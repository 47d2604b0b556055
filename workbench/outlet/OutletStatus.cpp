#include "OutletStatus.h"

#include <algorithm>
#include <utility>

#include "dorvelshare/HostEnvironment.h"

namespace workbench {

OutletStatus::OutletStatus(std::string outletName, LogBuffer& runLog) : log(runLog) {
    state.name = std::move(outletName);
    state.since = dorvel::Environment().Now();
}

void OutletStatus::Set(OutletHealth health, std::string const& text) {
    {
        std::lock_guard<std::mutex> const lock(mutex);
        if (state.health == health && state.text == text) {
            return;
        }
        state.health = health;
        state.text = text;
        state.since = dorvel::Environment().Now();
    }
    log.Add(state.name + ": " + text);
}

void OutletStatus::Count(char const* figure, unsigned long long more) {
    std::lock_guard<std::mutex> const lock(mutex);
    auto const found = std::find_if(state.counts.begin(), state.counts.end(),
                                    [&](auto const& count) { return count.first == figure; });
    if (found == state.counts.end()) {
        state.counts.emplace_back(figure, more);
    } else {
        found->second += more;
    }
}

OutletState OutletStatus::State() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return state;
}

}  // namespace workbench
