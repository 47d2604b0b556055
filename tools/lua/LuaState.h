#pragma once

#include <chrono>
#include <cstddef>
#include <stdexcept>
#include <string>

struct lua_Debug;
struct lua_State;

namespace tools {

struct LuaLimits {
    std::chrono::milliseconds time{5000};
    std::size_t memory = std::size_t{256} << 20;  // octets
    long long instructions = 0;                   // 0: no limit but the time
};

// A Lua state for a script that is not trusted. Its memory is always limited, its time and its instructions
// between StartClock and StopClock. A script that exceeds a limit gets a Lua error at every further check, so
// pcall does not let it continue. Precompiled chunks are not run. What Lua runs without checks is not limited
// in time: a message handler of xpcall, a finalizer, a long call into the C library. `open` offers none of
// these, or the program watches over the time itself.
class LuaState {
public:
    // `open` fills the state with what the script may use. It is called as a lua_CFunction, protected and
    // with `argument` as a light userdata on its stack, and so must hold no C++ object that an error would
    // skip. `subject` names the script in the message of an exceeded limit: "the project". Throws
    // std::bad_alloc if the memory does not suffice.
    LuaState(LuaLimits const& luaLimits, std::string const& subject, int (*open)(lua_State*),
             void const* argument = nullptr);
    LuaState(LuaState const&) = delete;
    LuaState& operator=(LuaState const&) = delete;
    ~LuaState();

    lua_State* Get() const { return L; }

    void StartClock();
    void StopClock();

    // Runs a text as a Lua chunk of that name. Returns the error as Lua words it, or "" and `results` values
    // on the stack.
    std::string Run(std::string const& text, std::string const& name, int results = 0);

    // Calls the function at `reference` in the Lua registry without arguments, and releases it. Returns as
    // Run does.
    std::string Call(int reference);

private:
    static void* Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize);
    static void Check(lua_State* L, lua_Debug* activation);
    char const* Exceeded();
    std::string TakeError();

    LuaLimits limits;
    std::string timeExceeded;
    std::string instructionsExceeded;
    std::size_t used = 0;
    long long instructionsLeft = 0;
    std::chrono::steady_clock::time_point deadline;
    lua_State* L = nullptr;
};

// Finds the innermost function of Lua's own code that is running, with its source and current line. Returns
// false if there is none. Raises no Lua error.
bool FindScript(lua_State* L, lua_Debug& activation);

}  // namespace tools
