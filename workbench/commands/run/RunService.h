#pragma once

#include "OutletList.h"
#include "PlantMemory.h"
#include "ServiceManager.h"

namespace workbench {

// Reports a run to the service manager, from the main thread alone: a cycle that takes long changes nothing
// of it, a main thread that hangs ends it.
class RunService {
public:
    // Both outlive it.
    RunService(PlantMemory const& runMemory, OutletList const& runOutlets);

    // When the blocks have been started, and so have the outlets.
    void Begin();
    // Several times a second.
    void Serve();
    // When the run ends, before anything is waited for.
    void End() { manager.Stopping(); }

    std::chrono::milliseconds LongestWait() const { return manager.LongestWait(); }

private:
    PlantMemory const& memory;
    OutletList const& outlets;
    ServiceManager manager;
    ServiceManager::Clock::time_point reported{};  // when the status was last looked at
};

}  // namespace workbench
