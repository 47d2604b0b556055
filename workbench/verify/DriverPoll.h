#pragma once

#include "Judge.h"
#include "LogBuffer.h"
#include "PollGuard.h"
#include "Project.h"
#include "dorvelshare/VariableStore.h"

namespace workbench {

// Runs single cycles of a block on the caller's thread and reads what the driver has delivered.
class DriverPoll {
public:
    // All must outlive the object. The guard is the environment of the driver.
    DriverPoll(VariableStore& variableStore, PollGuard& pollGuard, LogBuffer const& driverLog)
        : store(variableStore), guard(pollGuard), log(driverLog) {}

    // One cycle. Variables that it does not deliver have no value afterwards. A cycle that would take longer
    // than any that ends by itself within ten minutes is cut off, as a fault.
    void Cycle(BlockConfig const& block);

    // Instead of a cycle: no variable has a value, for this reason.
    void Skip(BlockConfig const& block, std::string const& reason);

    DriverReading Reading(VariableConfig const& variable) const;
    // Without values: whether the last cycle was a fault, and where.
    DriverReading const& Outcome() const { return outcome; }

private:
    void Forget(BlockConfig const& block);

    VariableStore& store;
    PollGuard& guard;
    LogBuffer const& log;
    DriverReading outcome;
};

}  // namespace workbench
