#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "Project.h"

struct lua_Debug;
struct lua_State;

namespace workbench {

struct ScriptLimits {
    std::chrono::milliseconds time{5000};
    std::size_t memory = std::size_t{256} << 20;  // octets
};

// A Lua state with the standard libraries for a project. Its memory is always limited, its time from
// StartClock to StopClock. After the time limit every instruction raises a Lua error, so that no protected
// call can catch it for good. Removed are the ways around these limits and into the interpreter: the library
// debug, libraries in C, precompiled chunks and os.exit. print writes to standard error.
class ScriptState {
public:
    explicit ScriptState(ScriptLimits scriptLimits);
    ScriptState(ScriptState const&) = delete;
    ScriptState& operator=(ScriptState const&) = delete;
    ~ScriptState();

    lua_State* Get() const { return L; }

    void StartClock();
    void StopClock();

    // Runs a text as a Lua chunk of that name. Returns the text of the Lua error, empty without one.
    std::string Run(std::string const& text, std::string const& name);

    // Calls a function in the Lua registry without arguments and removes it from there. Returns as Run.
    std::string Call(int reference);

    // The file and line that this Lua thread is executing, of the innermost function in Lua.
    static Place CurrentPlace(lua_State* L);

private:
    static void* Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize);
    static void CheckClock(lua_State* L, lua_Debug* activation);
    static int OpenLibraries(lua_State* L);

    ScriptLimits limits;
    std::size_t used = 0;
    std::chrono::steady_clock::time_point deadline;
    lua_State* L = nullptr;
};

}  // namespace workbench
