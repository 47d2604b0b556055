#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "STTaskImpl.h"
#include "dorvel/Registration.h"
#include "dorvel/Runtime.h"
#include "dorvelshare/VariableStore.h"

namespace dorvel {

// A runtime's record of one block.
struct BlockEntry {
    ScadaProtocol* block;
    int reference;           // of the userdata in the Lua registry, which keeps the block alive
    STTask* task = nullptr;  // null: the first task
    bool isInitialised = false;
    unsigned long long cycles = 0;
};

struct __attribute__((visibility("hidden"))) Runtime::Impl {
    using Clock = std::chrono::steady_clock;

    lua_State* L = nullptr;
    std::shared_ptr<VariableStore> store = std::make_shared<VariableStore>();
    std::vector<std::unique_ptr<STTask>> tasks;
    std::vector<std::unique_ptr<BlockEntry>> blocks;
    BeginObserver onBegin;
    CycleObserver observer;
    WriteObserver onWrite;

    std::mutex requestMutex;
    std::set<long long> writeRequests;  // ids of variables

    bool isStarted = false;
    std::vector<std::thread> threads;
    std::mutex mutex;  // of the three below
    std::condition_variable changed;
    bool isStopping = false;
    std::size_t running = 0;

    void Forget(ScadaProtocol const& block);
    BlockEntry* Find(ScadaProtocol const& block);
    STTask* TaskOf(BlockEntry const& entry) const;
    // The data provider of the block's task, null for an unknown block or without tasks.
    LuaDataProvider* ProviderOf(ScadaProtocol const& block);
    std::vector<BlockEntry*> BlocksOf(STTask const& task);

    // True once for every RequestWrite of the variable.
    bool TakeWriteRequest(long long id);

    static void Notify(ConfigProcessorMode mode);
    void RunBlock(BlockEntry& entry);
    // Runs a task on its thread; cycles 0: no limit.
    void RunTask(STTask const& task, std::vector<BlockEntry*> const& taskBlocks, unsigned long long cycles);
    void RunCycles(STTask const& task, std::vector<BlockEntry*> const& taskBlocks, unsigned long long cycles);
    bool MustStop();
    // False when the runtime must stop before then.
    bool WaitUntil(Clock::time_point time);
    void AskToStop();
};

}  // namespace dorvel
