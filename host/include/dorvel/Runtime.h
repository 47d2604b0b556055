#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "HostApi.h"
#include "dorvel/STTask.h"
#include "dorvelshare/VariableStore.h"
#include "opcua/OpcUa_Variant.h"

struct lua_State;
class BaseLuaObj;
class ScadaProtocol;

namespace dorvel {

// The runtime around the drivers: variables, tasks, registered libraries and configuration processors. One
// Lua state belongs to one runtime; the state is the caller's and has to outlive it. Not safe for several
// threads but for RequestStop.
class DORVEL_HOST_API Runtime {
public:
    // Called after every cycle of a block, on the thread of its task: the block, the number of its cycle from
    // 1, and whether the driver ran.
    using CycleObserver = std::function<void(ScadaProtocol& block, unsigned long long cycle, bool ran)>;

    // Called when the write condition has let a value through, on the thread of the task, before the driver
    // writes it: the block, the id of the write channel's variable, and the bare value.
    using WriteObserver = std::function<void(ScadaProtocol& block, long long id, OpcUa_Variant const& value)>;

    explicit Runtime(lua_State* L);
    Runtime(Runtime const&) = delete;
    Runtime& operator=(Runtime const&) = delete;
    // Stops what runs and lets the blocks go.
    ~Runtime();

    VariableStore& Variables();

    // Prepares the Lua state: the table TYPES with the elementary types, FBMetadata, and every library that
    // add-ins have registered. A library that refuses is an exception with its name. Processors get the modes
    // Load before and Loaded after it.
    void OpenLibraries();

    STTask& AddTask(std::string name, std::chrono::milliseconds period);
    STTask* FindTask(std::string const& name);

    // All blocks that scripts have made in this state, in the order of making (BaseLuaObj::Init enters them).
    std::vector<ScadaProtocol*> Blocks() const;
    // Gives a block to a task, before InitBlock. A block that nobody assigned belongs to the first task. The
    // runtime keeps its blocks alive.
    void Assign(ScadaProtocol& block, STTask& task);
    // InitedInternal of one block, once: its variables become tags. What the driver throws comes out as it
    // is; a block that is unknown, without a task or initialised already is a std::logic_error.
    void InitBlock(ScadaProtocol& block);

    void SetCycleObserver(CycleObserver observer);
    void SetWriteObserver(WriteObserver observer);
    // The next look that the condition OnChange takes at the variable counts as a change, whatever was
    // written last. Any thread may call it.
    void RequestWrite(long long id);

    // Runs every task on its own thread: start mode, then cycles until Stop, or until every block has had so
    // many cycles (0: no end).
    void Start(unsigned long long cycles = 0);
    // One cycle of every block of every task, on the caller's thread; for tests and single steps.
    void RunOnce();
    // True once every task has ended by itself; waits up to timeout for that.
    bool WaitFinished(std::chrono::milliseconds timeout);
    // Stop mode to the processors, waits for the threads, stopped mode. Nothing when not started.
    void Stop();
    // Asks the tasks to end after the block that is in its cycle; Stop is still needed. Any thread may call
    // it.
    void RequestStop();

private:
    friend class ::BaseLuaObj;
    friend class ::ScadaProtocol;
    struct Impl;

    // Takes a block whose userdata the Lua registry keeps under the reference.
    void Enter(ScadaProtocol& block, int reference);

    std::unique_ptr<Impl> impl;
};

// The runtime that owns the Lua state, null if there is none.
DORVEL_HOST_API Runtime* FindRuntime(lua_State* L);

}  // namespace dorvel
