#pragma once

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <thread>

#include "LogBuffer.h"
#include "Observation.h"
#include "SetRequest.h"
#include "Snapshot.h"
#include "dorvel/Runtime.h"

namespace workbench {

// Writes values that the user sets to the device, through the variables' write channels and the block's write
// condition, and tracks their state. A value is stored in the runtime after a poll of its block without a
// fault, so the driver writes it in the write phase of the next poll, also when the device has the value
// already.
//
// The driver returns no result of a write. The first line that it logs on the block's thread, from the time
// that the condition passes a value until it passes the next one or the cycle ends, counts as the failure of
// that write. Without such a line the next values read decide: those that the device has answered by the
// standard, where they are observed and can be compared, otherwise those of the driver. They decide too when
// a write fails only because its answer is lost or late. Thread-safe.
class ValueSetter {
public:
    // Sets the write observer of the runtime and the listener of the log. All references must outlive the
    // setter. observation may be null.
    ValueSetter(dorvel::Runtime& blockRuntime, LogBuffer& runtimeLog, Observation const* datagrams = nullptr);
    ValueSetter(ValueSetter const&) = delete;
    ValueSetter& operator=(ValueSetter const&) = delete;
    ~ValueSetter();

    // Replaces a value that was set before and has not been written.
    void Set(SetRequest const& request);

    // Called after a cycle of a block, on the thread of its task.
    void AfterCycle(BlockConfig const& block, bool fault);

    // Copies the current states to the snapshot.
    void Show(BlockSnapshot& block) const;
    // The current state of one variable; the stage None if it was not set.
    WriteState StateOf(BlockConfig const& block, VariableConfig const& variable) const;
    // The current states of all variables that were set.
    std::map<VariableConfig const*, WriteState> States() const;

private:
    struct Entry {
        BlockConfig const* block = nullptr;
        VariableConfig const* variable = nullptr;
        WriteState state;
        bool queued = false;    // not yet stored in the runtime
        bool inFlight = false;  // passed to the driver and not yet confirmed by a value read
        bool fresh = false;     // in flight since the current cycle
        bool isTaken = false;   // passed to the driver in the current cycle, also again
        // Refused by a line of the driver. The device has not refused it, so it may hold the value.
        bool inDoubt = false;
        unsigned long long before = 0;  // the number of the latest write when the driver took the value
        unsigned cyclesSent = 0;        // in how many cycles the value was sent, 2 for more
    };

    WriteState Current(BlockConfig const& block, VariableConfig const& variable) const;
    void Taken(long long id);
    void Logged(std::string const& line);
    void Examine(Entry& entry) const;
    void ExamineTaken(Entry& entry, PointWrite const& write) const;
    void Confirm(Entry& entry, bool fault);
    void Reconsider(Entry& entry, bool fault) const;
    WriteState Judge(Entry const& entry) const;
    PointTable const* PointsOf(Entry const& entry) const;
    void Apply(BlockConfig const& block);
    void SetTrigger(BlockConfig const& block, bool on);

    dorvel::Runtime& runtime;
    LogBuffer& log;
    Observation const* observation;
    mutable std::mutex mutex;
    std::map<long long, Entry> entries;              // by WriteId
    std::map<std::thread::id, Entry*> beingWritten;  // by the thread that writes
    std::set<BlockConfig const*> triggered;
};

}  // namespace workbench
