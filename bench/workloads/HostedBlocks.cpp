#include "HostedBlocks.h"

#include <dlfcn.h>

#include <algorithm>
#include <chrono>
#include <lua.hpp>
#include <ratio>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "Counting.h"
#include "dorvel/Runtime.h"
#include "dorvel/ScadaProtocol.h"
#include "dorvelshare/Trace.h"

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

std::string Field(char const* name, long long value) {
    return std::string(name) + " = " + std::to_string(value) + ", ";
}

}  // namespace

LoadTimes LoadAddin() {
    LoadTimes times;
    Clock::time_point const begin = Clock::now();
    void* const library = dlopen(ADDIN_PATH, RTLD_NOW | RTLD_LOCAL);
    times.load = MillisecondsSince(begin);
    auto const init = library ? reinterpret_cast<int (*)()>(dlsym(library, "InitAddin")) : nullptr;
    Clock::time_point const initBegin = Clock::now();
    if (!init || init() != 0) {
        throw std::runtime_error("the add-in cannot be loaded");
    }
    times.init = MillisecondsSince(initBegin);
    return times;
}

HostedBlocks::HostedBlocks(std::string const& name, int objectsOfEach, int count)
    : subject(SubjectNamed(name)),
      objects(objectsOfEach),
      blocks(count),
      network(subject.answers),
      state(luaL_newstate(), lua_close),
      runtime(std::make_unique<dorvel::Runtime>(state.get())) {
    if (subject.isWritten || subject.answers.empty()) {
        throw std::invalid_argument("a block that only reads and is answered: " + name);
    }
    dorvel::SetLogSink([](std::string_view) {});
    runtime->AddTask("task", std::chrono::milliseconds(0));
    runtime->OpenLibraries();
}

HostedBlocks::~HostedBlocks() {
    runtime.reset();
    state.reset();
    dorvel::SetLogSink(nullptr);
}

void HostedBlocks::Check(int status) const {
    if (status != LUA_OK) {
        throw std::runtime_error(lua_tostring(state.get(), -1));
    }
}

std::string HostedBlocks::ScriptOfABlock() {
    std::string list;
    for (int number = 1; number <= objects; ++number) {
        for (Subject::Variable const& variable : subject.variables) {
            list += "{ " + Field("ReadId", runtime->Variables().Declare("value", variable.type)) +
                    Field("Type", variable.type.Type) + Field("ElementType", variable.type.ElementType) +
                    Field("ObjectType", subject.objectType) + Field("ObjectProperties", variable.property) +
                    Field("ObjectNumber", number) + "},\n";
        }
    }
    return "BACnet.new{ MAC = '192.168.10.7:47808', CountRepeat = 1, Vars = {\n" + list + "} }\n";
}

void HostedBlocks::Make() {
    for (int block = 0; block < blocks; ++block) {
        Declare();
        Compile();
        Run();
    }
    Collect();
}

void HostedBlocks::Declare() {
    script = ScriptOfABlock();
}

void HostedBlocks::Compile() {
    Check(luaL_loadstring(state.get(), std::exchange(script, {}).c_str()));
}

void HostedBlocks::Run() {
    CountingToggled const counted;
    Check(lua_pcall(state.get(), 0, 0, 0));
}

void HostedBlocks::Init() {
    CountingToggled const counted;
    for (ScadaProtocol* const block : runtime->Blocks()) {
        runtime->InitBlock(*block);
    }
}

void HostedBlocks::RunOnce() {
    unsigned long const before = network.Requests();
    {
        CountingToggled const counted;
        runtime->RunOnce();
    }
    auto const all = runtime->Blocks();
    bool const hasFault =
        std::any_of(all.begin(), all.end(), [](ScadaProtocol const* block) { return block->State().Fault; });
    if (hasFault || network.Requests() - before != static_cast<unsigned long>(Objects())) {
        throw std::runtime_error("a cycle did not read every object");
    }
}

void HostedBlocks::Release() {
    runtime.reset();
}

void HostedBlocks::Collect() {
    CountingToggled const counted;
    lua_gc(state.get(), LUA_GCCOLLECT);
}

}  // namespace bench
