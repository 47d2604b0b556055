#include "RunService.h"

#include "RunStatus.h"

namespace workbench {

RunService::RunService(PlantMemory const& runMemory, OutletList const& runOutlets)
    : memory(runMemory), outlets(runOutlets) {}

void RunService::Begin() {
    manager.Ready();
    Serve();
}

void RunService::Serve() {
    if (!manager.IsPresent()) {
        return;
    }
    auto const now = ServiceManager::Clock::now();
    manager.Alive(now);
    if (now - reported >= std::chrono::seconds(1)) {
        reported = now;
        manager.Status(RunStatus(memory.board.All(), outlets.States()));
    }
}

}  // namespace workbench
