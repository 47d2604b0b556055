// Prints the cost of the add-in on this machine: time to start, memory of a block and of a variable.

#include <dlfcn.h>

#include <chrono>
#include <cstdio>
#include <lua.hpp>
#include <memory>
#include <ratio>
#include <string>

#include "Heap.h"
#include "dorvel/Runtime.h"
#include "dorvel/ScadaProtocol.h"

namespace {

using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

// The typical variable of a plant: an analog value with quality, read only.
std::string Variables(int count) {
    std::string list;
    for (int number = 1; number <= count; ++number) {
        list += "{ ReadId = " + std::to_string(number) +
                ", Type = 23, ElementType = 10, ObjectType = 0, ObjectProperties = 21, ObjectNumber = " +
                std::to_string(number) + " }, ";
    }
    return list;
}

// Octets allocated in C++ while a number of blocks exists: after the script's call, and after the end of
// configuration. Lua's memory, which has the objects themselves, is separate.
struct Octets {
    double made = 0;
    double configured = 0;
    double lua = 0;
};

double LuaOctets(lua_State* L) {
    lua_gc(L, LUA_GCCOLLECT);
    return lua_gc(L, LUA_GCCOUNT) * 1024.0 + lua_gc(L, LUA_GCCOUNTB);
}

Octets Measure(int blocks, int variables) {
    std::unique_ptr<lua_State, void (*)(lua_State*)> const state(luaL_newstate(), lua_close);
    lua_State* const L = state.get();
    dorvel::Runtime runtime(L);
    runtime.AddTask("task", std::chrono::milliseconds(100));
    runtime.OpenLibraries();
    std::string const text =
        "return BACnet.new{ Address = '192.168.100.20:47808', MAC = '192.168.100.20:47808', Vars = { " +
        Variables(variables) + " } }";
    auto const before = static_cast<double>(test::HeapOctets());
    double const luaBefore = LuaOctets(L);
    for (int block = 0; block < blocks; ++block) {
        if (luaL_dostring(L, text.c_str()) != LUA_OK) {
            std::fprintf(stderr, "%s\n", lua_tostring(L, -1));
        }
        lua_settop(L, 0);
    }
    Octets octets;
    octets.lua = LuaOctets(L) - luaBefore;
    octets.made = static_cast<double>(test::HeapOctets()) - before;
    for (ScadaProtocol* const block : runtime.Blocks()) {
        runtime.InitBlock(*block);
    }
    octets.configured = static_cast<double>(test::HeapOctets()) - before;
    return octets;
}

void PrintMemory() {
    constexpr int blocks = 100;
    constexpr int count = 1000;
    Measure(1, 1);
    Octets const one = Measure(1, 0);
    Octets const many = Measure(1 + blocks, 0);
    std::printf("a block: %.0f octets in Lua, %.0f beside it\n", (many.lua - one.lua) / blocks,
                (many.configured - one.configured) / blocks);
    Octets const full = Measure(1, count);
    std::printf("a variable: %.0f octets in the driver and the host's list, %.0f in that list until Inited\n",
                (full.configured - one.configured) / count, (full.made - one.made) / count);
}

}  // namespace

int main(int count, char** arguments) {
    Clock::time_point const begin = Clock::now();
    void* const library = dlopen(count > 1 ? arguments[1] : ADDIN_PATH, RTLD_NOW | RTLD_LOCAL);
    auto const init = library ? reinterpret_cast<int (*)()>(dlsym(library, "InitAddin")) : nullptr;
    if (!init || init() != 0) {
        std::fprintf(stderr, "the add-in cannot be loaded: %s\n", library ? "InitAddin" : dlerror());
        return 1;
    }
    std::printf("loading the add-in: %.2f ms\n", MillisecondsSince(begin));
    Clock::time_point const secondBegin = Clock::now();
    Measure(1, 100);
    std::printf("a runtime and a block of 100 variables: %.2f ms\n", MillisecondsSince(secondBegin));
    PrintMemory();
}
