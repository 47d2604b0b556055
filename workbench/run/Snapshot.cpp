#include "Snapshot.h"

#include <mutex>

#include "Printable.h"
#include "dorvel/ScadaProtocol.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

void TakeFaultState(LuaObjState const& state, BlockSnapshot& block) {
    std::lock_guard<std::mutex> const lock(state.Mutex);
    block.Told = state.Finished;
    block.Fault = state.Fault;
    block.ErrorText = state.ErrorText;
}

}  // namespace

BlockSnapshot TakeSnapshot(BlockConfig const& block, unsigned long long cycle, VariableStore const& store) {
    BlockSnapshot snapshot;
    snapshot.Config = &block;
    snapshot.Cycle = cycle;
    snapshot.Time = dorvel::Environment().Now();
    snapshot.LocalDiff = dorvel::Environment().LocalTimeDiff();
    TakeFaultState(block.Protocol->State(), snapshot);
    snapshot.Variables.reserve(block.Variables.size());
    for (VariableConfig const& variable : block.Variables) {
        snapshot.Variables.push_back({&variable, {}});
        store.Read(variable.ReadId, "", snapshot.Variables.back().State);
    }
    return snapshot;
}

bool IsFault(BlockSnapshot const& block) {
    return block.Cycle > 0 && (!block.Told || block.Fault);
}

std::string FaultText(BlockSnapshot const& block) {
    if (!IsFault(block)) {
        return {};
    }
    return block.Told ? block.ErrorText : "not polled";
}

std::string StateText(BlockSnapshot const& block) {
    if (block.Cycle == 0) {
        return "waiting";
    }
    return IsFault(block) ? "FAULT " + Printable(FaultText(block)) : "OK";
}

std::string ObjectText(VariableConfig const& variable) {
    return std::string(variable.ObjectType->Name) + " " + std::to_string(variable.ObjectNumber);
}

}  // namespace workbench
