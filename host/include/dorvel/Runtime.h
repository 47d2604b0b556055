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

// The runtime around the drivers: variables, tasks, registered libraries and configuration processors. A Lua
// state has at most one runtime; the caller owns the state, which must outlive the runtime. Only RequestWrite
// and RequestStop may be called from any thread.
class DORVEL_HOST_API Runtime {
public:
    // Called before every cycle of a block, on the thread of its task.
    using BeginObserver = std::function<void(ScadaProtocol& block)>;

    // Called after every cycle of a block, on the thread of its task. cycle counts from 1; ran is false when
    // Execute was not called.
    using CycleObserver = std::function<void(ScadaProtocol& block, unsigned long long cycle, bool ran)>;

    // Called when the write condition passes a value, on the thread of the task, before the driver writes it.
    // id is the variable of the write channel, value the bare value.
    using WriteObserver = std::function<void(ScadaProtocol& block, long long id, OpcUa_Variant const& value)>;

    explicit Runtime(lua_State* L);
    Runtime(Runtime const&) = delete;
    Runtime& operator=(Runtime const&) = delete;
    // Stops the tasks and releases the blocks.
    ~Runtime();

    VariableStore& Variables();

    // Prepares the Lua state: the table TYPES with the elementary types, FBMetadata, and every library that
    // add-ins have registered. A library that cannot be opened is a std::runtime_error with its name.
    // Processors are called with Load before and with Loaded after.
    void OpenLibraries();

    STTask& AddTask(std::string name, std::chrono::milliseconds period);
    STTask* FindTask(std::string const& name);

    // All blocks that scripts have made in this state, in the order of their creation (BaseLuaObj::Init
    // registers them).
    std::vector<ScadaProtocol*> Blocks() const;
    // Assigns a block to a task; only before InitBlock. An unassigned block belongs to the first task. The
    // runtime keeps its blocks alive.
    void Assign(ScadaProtocol& block, STTask& task);
    // Calls InitedInternal of a block, once: its variables become tags. Exceptions of the driver pass
    // unchanged. std::logic_error for a block that is unknown, without a task or initialised already.
    void InitBlock(ScadaProtocol& block);

    void SetBeginObserver(BeginObserver observer);
    void SetCycleObserver(CycleObserver observer);
    void SetWriteObserver(WriteObserver observer);
    // Makes the next check of the variable by the condition OnChange pass, whatever was written last.
    void RequestWrite(long long id);

    // Calls the processors with Start, then runs every task on its own thread until Stop, or until every
    // block has had this number of cycles (0: no limit).
    void Start(unsigned long long cycles = 0);
    // Runs one cycle of every block of every task on the caller's thread; for tests and single steps.
    void RunOnce();
    // Waits up to timeout for every task to end by itself. True when they have.
    bool WaitFinished(std::chrono::milliseconds timeout);
    // Calls the processors with Stop, waits for the threads, calls the processors with Stopped. Does nothing
    // when not started.
    void Stop();
    // Asks the tasks to end after the block whose cycle is running; Stop is still needed.
    void RequestStop();

private:
    friend class ::BaseLuaObj;
    friend class ::ScadaProtocol;
    struct Impl;

    // Registers a block; reference is that of its userdata in the Lua registry.
    void Enter(ScadaProtocol& block, int reference);

    std::unique_ptr<Impl> impl;
};

// The runtime that owns the Lua state, null if there is none.
DORVEL_HOST_API Runtime* FindRuntime(lua_State* L);

}  // namespace dorvel
