#pragma once

#include <functional>

#include "CycleTimes.h"
#include "LoadedProject.h"
#include "Snapshot.h"

namespace workbench {

// Watches the cycles of a project's blocks: sets what their threads are doing (Whereabouts.h), measures them,
// and passes a snapshot on after each.
class CycleWatch {
public:
    // Called after a cycle of a block, on the thread of its task. May complete the snapshot.
    using Follower = std::function<void(BlockSnapshot& snapshot)>;

    // Sets the observers of the runtime. The project must be loaded and outlive the watch.
    CycleWatch(LoadedProject& watchedProject, Follower cycleFollower);
    CycleWatch(CycleWatch const&) = delete;
    CycleWatch& operator=(CycleWatch const&) = delete;
    // The runtime must have stopped.
    ~CycleWatch();

private:
    void Begin(ScadaProtocol const& protocol);
    void End(ScadaProtocol const& protocol, unsigned long long cycle, bool ran);
    BlockConfig const& ConfigOf(ScadaProtocol const& protocol) const;

    LoadedProject& project;
    Follower follower;
    CycleTimes times;
    std::map<ScadaProtocol const*, BlockConfig const*> configs;  // not changed after the constructor
};

}  // namespace workbench
