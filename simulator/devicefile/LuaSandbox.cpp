#include "LuaSandbox.h"

#include <cstdlib>
#include <cstring>
#include <lua.hpp>
#include <new>
#include <string_view>

#include "Mistake.h"
#include "ScriptReader.h"

namespace simulator {

namespace {

constexpr long long MostInstructions = 20'000'000;
constexpr std::chrono::seconds LongestRun{5};
constexpr int DeepestTable = 32;
constexpr std::size_t LargestValue = std::size_t{136} << 20;  // octets

// The key of the devices in the registry of a Lua state.
char const DevicesKey = 0;

// Keeps only functions that reach nothing outside and do not loop without Lua instructions.
constexpr char const* Prelude = R"(
    local function keep(from, names)
        for name in pairs(from) do
            if not names[name] then from[name] = nil end
        end
    end
    local pairs = pairs
    keep(string, {byte = 1, char = 1, format = 1, len = 1, lower = 1, sub = 1, upper = 1})
    keep(_G, {assert = 1, error = 1, ipairs = 1, next = 1, pairs = 1, select = 1, tonumber = 1,
              tostring = 1, type = 1, math = 1, string = 1})
    table = {insert = function(list, value) list[#list + 1] = value end}
)";

// device{...}: also collects the device.
int MakeDevice(lua_State* L) {
    tools::MakeValue(L);
    lua_rawgetp(L, LUA_REGISTRYINDEX, &DevicesKey);
    lua_pushvalue(L, -2);
    lua_rawseti(L, -2, static_cast<lua_Integer>(lua_rawlen(L, -2)) + 1);
    lua_pop(L, 1);
    return 1;
}

// With a list of constructors: fills the state.
int Open(lua_State* L) {
    auto const& constructors = *static_cast<std::vector<std::string> const*>(lua_touserdata(L, 1));
    luaL_requiref(L, LUA_GNAME, luaopen_base, 1);
    luaL_requiref(L, LUA_STRLIBNAME, luaopen_string, 1);
    luaL_requiref(L, LUA_MATHLIBNAME, luaopen_math, 1);
    lua_settop(L, 1);
    if (luaL_loadbufferx(L, Prelude, std::strlen(Prelude), "=prelude", "t") != LUA_OK) {
        return lua_error(L);
    }
    lua_call(L, 0, 0);
    lua_newtable(L);
    lua_rawsetp(L, LUA_REGISTRYINDEX, &DevicesKey);
    for (std::string const& name : constructors) {
        lua_pushstring(L, name.c_str());
        lua_pushcclosure(L, name == "device" ? MakeDevice : tools::MakeValue, 1);
        lua_setglobal(L, name.c_str());
    }
    return 0;
}

// Lua's messages begin with this and a line number.
constexpr char const* ChunkName = "=file";
constexpr std::string_view Prefix = "file:";

// An error of Lua without its line number.
Mistake MistakeOf(std::string const& error) {
    std::size_t const end = error.find(": ", Prefix.size());
    if (error.compare(0, Prefix.size(), Prefix) != 0 || end == std::string::npos) {
        return Mistake(error);
    }
    return Mistake(error.substr(end + 2), std::atoi(error.c_str() + Prefix.size()));
}

}  // namespace

// The clock is never stopped: an expression that is evaluated later may call functions of the file.
LuaSandbox::LuaSandbox(std::vector<std::string> const& constructors, std::size_t mostMemory) try
    : state({LongestRun, mostMemory, MostInstructions}, "the device file", Open, &constructors) {
    state.StartClock();
} catch (std::bad_alloc const&) {
    throw Mistake("not enough memory");
}

std::vector<ScriptValue> LuaSandbox::Run(std::string const& text) {
    Execute(text, 0);
    lua_rawgetp(state.Get(), LUA_REGISTRYINDEX, &DevicesKey);
    return TakeValue().list;
}

ScriptValue LuaSandbox::Evaluate(std::string const& expression) {
    Execute("return " + expression, 1);
    return TakeValue();
}

void LuaSandbox::Execute(std::string const& text, int results) {
    std::string const error = state.Run(text, ChunkName, results);
    if (!error.empty()) {
        throw MistakeOf(error);
    }
}

ScriptValue LuaSandbox::TakeValue() try {
    std::size_t room = LargestValue;
    ScriptValue value = tools::ReadValue(state.Get(), lua_gettop(state.Get()), DeepestTable, room,
                                         {"properties", "priority_array"});
    lua_pop(state.Get(), 1);
    return value;
} catch (tools::UnreadableValue const& reason) {
    lua_pop(state.Get(), 1);
    throw Mistake(reason.what(), reason.Line());
}

}  // namespace simulator
