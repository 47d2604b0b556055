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

// A Lua state with the ordinary libraries for a project. Its memory is limited all its life, its time from
// StartClock to StopClock: whoever runs longer gets a Lua error, at every instruction once the time is over,
// so that no protected call can hold it up. Left out are the ways past these limits and into the
// interpreter's inside: the library debug, libraries in C, precompiled chunks and os.exit. print writes to
// standard error.
class ScriptState {
public:
    explicit ScriptState(ScriptLimits scriptLimits);
    ScriptState(ScriptState const&) = delete;
    ScriptState& operator=(ScriptState const&) = delete;
    ~ScriptState();

    lua_State* Get() const { return L; }

    void StartClock();
    void StopClock();

    // Runs a text as a Lua chunk of that name. "" when it ran to its end, else the error as Lua words it.
    std::string Run(std::string const& text, std::string const& name);

    // Calls a function without arguments that stands in the Lua registry, and lets it go. As Run.
    std::string Call(int reference);

    // The innermost place of a script that is running in this thread of Lua.
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
