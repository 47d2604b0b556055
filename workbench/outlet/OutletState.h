#pragma once

#include <string>
#include <utility>
#include <vector>

namespace workbench {

enum class OutletHealth {
    Starting,  // nothing has been tried yet
    Good,
    Waiting,  // it is being tried again; values are kept meanwhile as the outlet says
    Failed    // until somebody acts
};

// "starting", "good", "waiting", "failed".
char const* HealthName(OutletHealth health);

// How an outlet of a run is, for people and programs.
struct OutletState {
    std::string name;  // "mqtt", "metrics", "recording"
    OutletHealth health = OutletHealth::Starting;
    std::string text;     // "connected to broker.example:8883", or what is wrong and what to do
    long long since = 0;  // a file time: since when it has this health and text
    // Figures of it, by their names: {"messages", 1234}.
    std::vector<std::pair<std::string, unsigned long long>> counts;
};

}  // namespace workbench
