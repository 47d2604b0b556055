#include "Snapshot.h"

#include <mutex>

#include "Printable.h"
#include "dorvel/ScadaProtocol.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

void TakeFaultState(LuaObjState const& state, BlockSnapshot& block) {
    std::lock_guard<std::mutex> const lock(state.Mutex);
    block.isReported = state.Finished;
    block.fault = state.Fault;
    block.errorText = state.ErrorText;
}

}  // namespace

BlockSnapshot TakeSnapshot(BlockConfig const& block, unsigned long long cycle, VariableStore const& store) {
    BlockSnapshot snapshot;
    snapshot.config = &block;
    snapshot.cycle = cycle;
    snapshot.time = dorvel::Environment().Now();
    snapshot.localDiff = dorvel::Environment().LocalTimeDiff();
    TakeFaultState(block.protocol->State(), snapshot);
    snapshot.variables.reserve(block.variables.size());
    for (VariableConfig const& variable : block.variables) {
        snapshot.variables.push_back({&variable, {}});
        store.Read(variable.readId, "", snapshot.variables.back().state);
    }
    return snapshot;
}

bool IsFault(BlockSnapshot const& block) {
    return block.cycle > 0 && !block.isStandby && (!block.isReported || block.fault);
}

std::string FaultText(BlockSnapshot const& block) {
    if (!IsFault(block)) {
        return {};
    }
    return block.isReported ? block.errorText : "not polled";
}

std::string StateText(BlockSnapshot const& block) {
    if (block.cycle == 0) {
        return "waiting";
    }
    if (block.isStandby) {
        return "STANDBY";
    }
    return IsFault(block) ? "FAULT " + tools::Printable(FaultText(block)) : "OK";
}

}  // namespace workbench
