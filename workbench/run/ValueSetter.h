#pragma once

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <thread>

#include "LogBuffer.h"
#include "SetRequest.h"
#include "Snapshot.h"
#include "dorvel/Runtime.h"

namespace workbench {

// Brings values that the user sets to the device, through the variables' write channels and the block's write
// condition, and follows what becomes of them. A value is given to the runtime after a clean poll of its
// block, so the driver writes it in the write phase of the next one; there every value set goes out once,
// also when the device shows it already.
//
// The driver returns nothing from a write. What it logs on the block's thread, from the moment that the
// condition lets a value through to the next such moment or to the end of the cycle, is the failure of that
// write. Without such a line the next values read tell whether it arrived. Safe for many threads.
class ValueSetter {
public:
    // Takes over the write observer and the log's listener; both outlive the setter.
    ValueSetter(dorvel::Runtime& blockRuntime, LogBuffer& runtimeLog);
    ValueSetter(ValueSetter const&) = delete;
    ValueSetter& operator=(ValueSetter const&) = delete;
    ~ValueSetter();

    // A value that was set before and has not gone out is forgotten.
    void Set(SetRequest const& request);

    // A block has had a cycle, on the calling thread.
    void AfterCycle(BlockConfig const& block, bool fault);

    // Puts the present states into the snapshot.
    void Show(BlockSnapshot& block) const;

private:
    struct Entry {
        BlockConfig const* block = nullptr;
        VariableConfig const* variable = nullptr;
        WriteState state;
        bool queued = false;    // the runtime has not been given the value
        bool inFlight = false;  // the driver has, and no value read since was the same
        bool fresh = false;     // ... in the cycle that is under way
    };

    void Taken(long long id);
    void Logged(std::string const& line);
    void Confirm(Entry& entry, bool fault);
    void Apply(BlockConfig const& block);
    void SetTrigger(BlockConfig const& block, bool on);

    dorvel::Runtime& runtime;
    LogBuffer& log;
    mutable std::mutex mutex;
    std::map<long long, Entry> entries;              // by WriteId
    std::map<std::thread::id, Entry*> beingWritten;  // by the thread that writes
    std::set<BlockConfig const*> triggered;
};

}  // namespace workbench
