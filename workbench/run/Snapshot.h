#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Cause.h"
#include "CycleTimes.h"
#include "Project.h"
#include "WriteState.h"
#include "dorvelshare/VariableStore.h"

namespace workbench {

struct VariableSnapshot {
    VariableConfig const* config;
    VariableState state;
    WriteState write{};
    // Set if the value comes from an error of the device, which the driver has read as a value:
    // "device: unknown-object".
    std::string suspect{};
};

// The state of a block after one of its cycles. Points into the project's configuration, which must outlive
// it.
struct BlockSnapshot {
    BlockConfig const* config = nullptr;
    unsigned long long cycle = 0;  // 0: none yet
    bool isReported = false;       // the driver has reported a fault state at least once
    bool fault = false;
    std::string errorText;
    long long time = 0;       // of the snapshot, a file time
    long long localDiff = 0;  // local time minus UTC at that time
    std::vector<VariableSnapshot> variables;
    // The host did not run this cycle, because it plays the standby of a redundant pair.
    bool isStandby = false;
    CycleFigures times;
    std::vector<Cause> causes;  // of the latest cycle
};

// A snapshot that does not change any more. All who show or keep a cycle have the same one.
using SharedSnapshot = std::shared_ptr<BlockSnapshot const>;

// Reads the block's fault state and variables now; the times come from the host's environment.
BlockSnapshot TakeSnapshot(BlockConfig const& block, unsigned long long cycle, VariableStore const& store);

// True when the block has had cycles and the driver has reported a fault, or nothing at all. A standby has no
// fault.
bool IsFault(BlockSnapshot const& block);

// The reason of a fault: the driver's text, or "not polled" when it has reported nothing. Empty without a
// fault.
std::string FaultText(BlockSnapshot const& block);

// "OK", "FAULT No connection", "STANDBY", or "waiting" before the first cycle.
std::string StateText(BlockSnapshot const& block);

}  // namespace workbench
