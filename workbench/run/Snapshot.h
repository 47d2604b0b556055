#pragma once

#include <string>
#include <vector>

#include "Project.h"
#include "WriteState.h"
#include "dorvelshare/VariableStore.h"

namespace workbench {

struct VariableSnapshot {
    VariableConfig const* config;
    VariableState state;
    WriteState write{};
};

// A block as it stood after one of its cycles. Points into the project's configuration, which outlives it.
struct BlockSnapshot {
    BlockConfig const* config = nullptr;
    unsigned long long cycle = 0;  // 0: none yet
    bool isReported = false;       // the driver has told a fault state at least once
    bool fault = false;
    std::string errorText;
    long long time = 0;       // when it was taken, a file time
    long long localDiff = 0;  // local time less UTC then
    std::vector<VariableSnapshot> variables;
};

// Reads the block's fault state and variables now; the times come from the host's environment.
BlockSnapshot TakeSnapshot(BlockConfig const& block, unsigned long long cycle, VariableStore const& store);

// Whether cycles have passed and the last one brought no clean poll: the driver told a fault, or it told
// nothing.
bool IsFault(BlockSnapshot const& block);

// Why it is in fault: the driver's words, or "not polled" when it told nothing. "" without a fault.
std::string FaultText(BlockSnapshot const& block);

// "OK", "FAULT No connection", or "waiting" before the first cycle.
std::string StateText(BlockSnapshot const& block);

// "analog-input 1".
std::string ObjectText(VariableConfig const& variable);

}  // namespace workbench
