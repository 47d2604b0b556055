#pragma once

#include <functional>
#include <map>

#include "CycleTimes.h"
#include "LoadedProject.h"
#include "Observation.h"
#include "Snapshot.h"

namespace workbench {

// Watches the cycles of a project's blocks: sets what their threads are doing (Whereabouts.h), measures them,
// and passes a snapshot on after each.
class CycleWatch {
public:
    // Called after a cycle of a block, on the thread of its task. May complete the snapshot and take it.
    using Follower = std::function<void(BlockSnapshot& snapshot)>;

    // Sets the observers of the runtime. The project must be loaded; it and the observation must outlive the
    // watch.
    CycleWatch(LoadedProject& watchedProject, Observation& datagrams, Follower cycleFollower);
    CycleWatch(CycleWatch const&) = delete;
    CycleWatch& operator=(CycleWatch const&) = delete;
    // The runtime must have stopped.
    ~CycleWatch();

private:
    void Begin(ScadaProtocol const& protocol);
    void End(ScadaProtocol const& protocol, unsigned long long cycle, bool ran);
    BlockConfig const& ConfigOf(ScadaProtocol const& protocol) const;

    void Explain(BlockSnapshot& snapshot, long long begin);

    LoadedProject& project;
    Observation& observation;
    Follower follower;
    CycleTimes times;
    // The block of each protocol and when its cycle began; the maps do not change after the constructor.
    std::map<ScadaProtocol const*, BlockConfig const*> configs;
    std::map<BlockConfig const*, long long> begins;
};

}  // namespace workbench
