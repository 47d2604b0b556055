#include "dorvel/Runtime.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <lua.hpp>
#include <stdexcept>
#include <utility>

#include "LuaCall.h"
#include "Registry.h"
#include "RuntimeImpl.h"
#include "TypeLibrary.h"
#include "dorvel/ScadaProtocol.h"
#include "dorvelshare/Trace.h"

namespace dorvel {
namespace {

// Its address is the key of the runtime in the registry of a Lua state.
char const RuntimeKey = 0;

void OpenLibrary(lua_State* L, RegisteredLibrary const& library) {
    try {
        ProtectLua(L, [&] {
            // Called directly and not by Lua: a negative result is a failure, not a count of values.
            int const result = library.open(L);
            if (result < 0) {
                luaL_error(L, "it cannot be opened: its function returned %d", result);
            }
        });
    } catch (std::runtime_error const& failure) {
        throw std::runtime_error("library '" + library.name + "': " + failure.what());
    }
}

}  // namespace

Runtime::Runtime(lua_State* L) : impl(std::make_unique<Impl>()) {
    if (!L || FindRuntime(L)) {
        throw std::logic_error("a runtime needs a Lua state of its own");
    }
    impl->L = L;
    ProtectLua(L, [&] {
        lua_pushlightuserdata(L, this);
        lua_rawsetp(L, LUA_REGISTRYINDEX, &RuntimeKey);
    });
}

Runtime::~Runtime() {
    Stop();
    lua_State* const L = impl->L;
    lua_checkstack(L, 2);
    lua_pushnil(L);
    lua_rawsetp(L, LUA_REGISTRYINDEX, &RuntimeKey);
    for (auto const& entry : impl->blocks) {
        entry->block->SetDataProvider(nullptr);
        entry->block->runtime = nullptr;
        luaL_unref(L, LUA_REGISTRYINDEX, entry->reference);
    }
}

VariableStore& Runtime::Variables() {
    return *impl->store;
}

void Runtime::OpenLibraries() {
    Impl::Notify(ConfigProcessorMode::Load);
    lua_State* const L = impl->L;
    ProtectLua(L, [L] { OpenTypes(L); });
    for (RegisteredLibrary const& library : RegisteredLibraries()) {
        OpenLibrary(L, library);
    }
    Impl::Notify(ConfigProcessorMode::Loaded);
}

void Runtime::Enter(ScadaProtocol& block, int reference) {
    impl->blocks.push_back(std::make_unique<BlockEntry>(BlockEntry{&block, reference}));
    block.runtime = this;
}

STTask& Runtime::AddTask(std::string name, std::chrono::milliseconds period) {
    if (impl->isStarted || FindTask(name) ||
        impl->tasks.size() >= std::numeric_limits<unsigned short>::max()) {
        throw std::logic_error("task '" + name + "' cannot be added");
    }
    if (period.count() < 0 || period.count() > std::numeric_limits<int>::max()) {
        throw std::invalid_argument("task '" + name + "': the period is out of range");
    }
    TaskSettings settings;
    settings.Name = std::move(name);
    settings.Number = static_cast<unsigned short>(impl->tasks.size() + 1);
    settings.PeriodMilliseconds = static_cast<unsigned int>(period.count());
    impl->tasks.push_back(std::make_unique<STTask>(std::move(settings), impl->store));
    return *impl->tasks.back();
}

STTask* Runtime::FindTask(std::string const& name) {
    for (auto const& task : impl->tasks) {
        if (task->settings.Name == name) {
            return task.get();
        }
    }
    return nullptr;
}

std::vector<ScadaProtocol*> Runtime::Blocks() const {
    std::vector<ScadaProtocol*> blocks;
    for (auto const& entry : impl->blocks) {
        blocks.push_back(entry->block);
    }
    return blocks;
}

void Runtime::Assign(ScadaProtocol& block, STTask& task) {
    BlockEntry* const entry = impl->Find(block);
    if (!entry || entry->isInitialised) {
        throw std::logic_error("only a block of this runtime that is not initialised can be assigned");
    }
    entry->task = &task;
}

void Runtime::InitBlock(ScadaProtocol& block) {
    BlockEntry* const entry = impl->Find(block);
    if (!entry || entry->isInitialised || !impl->TaskOf(*entry)) {
        throw std::logic_error("only a block of this runtime with a task can be initialised, and only once");
    }
    entry->isInitialised = true;
    block.InitedInternal(impl->L);
}

void Runtime::SetBeginObserver(BeginObserver observer) {
    impl->onBegin = std::move(observer);
}

void Runtime::SetCycleObserver(CycleObserver observer) {
    impl->observer = std::move(observer);
}

void Runtime::SetWriteObserver(WriteObserver observer) {
    impl->onWrite = std::move(observer);
}

void Runtime::RequestWrite(long long id) {
    std::lock_guard<std::mutex> const lock(impl->requestMutex);
    impl->writeRequests.insert(id);
}

bool Runtime::Impl::TakeWriteRequest(long long id) {
    std::lock_guard<std::mutex> const lock(requestMutex);
    return writeRequests.erase(id) > 0;
}

void Runtime::Start(unsigned long long cycles) {
    if (impl->isStarted) {
        throw std::logic_error("the runtime has been started already");
    }
    impl->isStarted = true;
    impl->isStopping = false;
    Impl::Notify(ConfigProcessorMode::Start);
    try {
        for (auto const& task : impl->tasks) {
            auto const run = [this, &settings = *task, blocks = impl->BlocksOf(*task), cycles] {
                impl->RunTask(settings, blocks, cycles);
            };
            std::lock_guard<std::mutex> const lock(impl->mutex);
            impl->threads.emplace_back(run);
            ++impl->running;
        }
    } catch (...) {
        Stop();
        throw;
    }
    Impl::Notify(ConfigProcessorMode::Running);
}

void Runtime::RunOnce() {
    if (impl->isStarted) {
        throw std::logic_error("the runtime is running");
    }
    for (auto const& task : impl->tasks) {
        for (BlockEntry* const entry : impl->BlocksOf(*task)) {
            impl->RunBlock(*entry);
        }
    }
}

bool Runtime::WaitFinished(std::chrono::milliseconds timeout) {
    constexpr std::chrono::hours longest(24 * 365);  // a longer wait would overflow the clock
    std::unique_lock<std::mutex> lock(impl->mutex);
    return impl->changed.wait_for(lock, std::min<std::chrono::milliseconds>(timeout, longest),
                                  [this] { return impl->running == 0; });
}

void Runtime::RequestStop() {
    impl->AskToStop();
}

void Runtime::Stop() {
    if (!impl->isStarted) {
        return;
    }
    Impl::Notify(ConfigProcessorMode::Stop);
    impl->AskToStop();
    for (std::thread& thread : impl->threads) {
        thread.join();
    }
    impl->threads.clear();
    impl->isStarted = false;
    Impl::Notify(ConfigProcessorMode::Stopped);
}

void Runtime::Impl::Notify(ConfigProcessorMode mode) {
    for (RegisteredProcessor const& entry : RegisteredProcessors()) {
        try {
            int const result = entry.processor(entry.source, mode, nullptr);
            if (result != 0) {
                logMsg("Processor '%s' returned %d in mode %d\n", entry.name.c_str(), result,
                       static_cast<int>(mode));
            }
        } catch (std::exception const& failure) {
            logMsg("Processor '%s' in mode %d: %s\n", entry.name.c_str(), static_cast<int>(mode),
                   failure.what());
        }
    }
}

Runtime* FindRuntime(lua_State* L) {
    if (!L || !lua_checkstack(L, 1)) {
        return nullptr;
    }
    lua_rawgetp(L, LUA_REGISTRYINDEX, &RuntimeKey);
    auto* const runtime = static_cast<Runtime*>(lua_touserdata(L, -1));
    lua_pop(L, 1);
    return runtime;
}

}  // namespace dorvel
