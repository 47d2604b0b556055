#include "LuaSandbox.h"

#include <cstdlib>
#include <cstring>
#include <lua.hpp>

#include "LuaReader.h"
#include "Mistake.h"

namespace simulator {

namespace {

constexpr int MostInstructions = 20'000'000;
// One instruction on long texts can take milliseconds.
constexpr std::chrono::seconds LongestRun{5};
constexpr int InstructionsPerCheck = 100;

// Where a Lua state keeps the devices in its registry.
char const DevicesKey = 0;

// Leaves only what neither reaches outside nor loops by itself without counting as instructions.
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

void* Allocate(void* used, void* block, std::size_t oldSize, std::size_t newSize) {
    auto& memory = *static_cast<LuaLimits*>(used);
    std::size_t const before = block ? oldSize : 0;
    if (newSize == 0) {
        std::free(block);
        memory.used -= before;
        return nullptr;
    }
    if (newSize > before && memory.used - before + newSize > memory.most) {
        return nullptr;
    }
    void* const moved = std::realloc(block, newSize);
    if (moved) {
        memory.used += newSize - before;
    }
    return moved;
}

void Check(lua_State* lua, lua_Debug* place) {
    void* limits = nullptr;
    lua_getallocf(lua, &limits);
    auto& left = *static_cast<LuaLimits*>(limits);
    left.instructions -= InstructionsPerCheck;
    if (left.instructions > 0 && std::chrono::steady_clock::now() < left.deadline) {
        return;
    }
    lua_getinfo(lua, "Sl", place);
    lua_pushfstring(lua, "%s:%d: the file runs for too long", place->short_src, place->currentline);
    lua_error(lua);
}

// NAME{...}: gives the table back inside a userdata with the kind and the line. Arguments that are no
// table are put into one.
int Make(lua_State* lua) {
    if (lua_gettop(lua) != 1 || !lua_istable(lua, 1)) {
        int const count = lua_gettop(lua);
        lua_createtable(lua, count, 0);
        lua_insert(lua, 1);
        for (int i = count; i >= 1; --i) {
            lua_rawseti(lua, 1, i);
        }
    }
    lua_Debug caller;
    caller.currentline = 0;
    if (lua_getstack(lua, 1, &caller) != 0) {
        lua_getinfo(lua, "l", &caller);
    }
    auto* const line = static_cast<int*>(lua_newuserdatauv(lua, sizeof(int), 2));
    *line = caller.currentline;
    lua_pushvalue(lua, lua_upvalueindex(1));
    lua_setiuservalue(lua, -2, 1);
    lua_pushvalue(lua, 1);
    lua_setiuservalue(lua, -2, 2);
    return 1;
}

// device{...}: also remembers the device.
int MakeDevice(lua_State* lua) {
    Make(lua);
    lua_rawgetp(lua, LUA_REGISTRYINDEX, &DevicesKey);
    lua_pushvalue(lua, -2);
    lua_rawseti(lua, -2, static_cast<lua_Integer>(lua_rawlen(lua, -2)) + 1);
    lua_pop(lua, 1);
    return 1;
}

// With a list of constructors: fills the state. As all that Lua calls it may be left by a jump, so it makes
// no objects.
int Prepare(lua_State* lua) {
    auto const& constructors = *static_cast<std::vector<std::string> const*>(lua_touserdata(lua, 1));
    luaL_requiref(lua, LUA_GNAME, luaopen_base, 1);
    luaL_requiref(lua, LUA_STRLIBNAME, luaopen_string, 1);
    luaL_requiref(lua, LUA_MATHLIBNAME, luaopen_math, 1);
    lua_settop(lua, 1);
    if (luaL_loadbufferx(lua, Prelude, std::strlen(Prelude), "=prelude", "t") != LUA_OK) {
        return lua_error(lua);
    }
    lua_call(lua, 0, 0);
    lua_newtable(lua);
    lua_rawsetp(lua, LUA_REGISTRYINDEX, &DevicesKey);
    for (std::string const& name : constructors) {
        lua_pushstring(lua, name.c_str());
        lua_pushcclosure(lua, name == "device" ? MakeDevice : Make, 1);
        lua_setglobal(lua, name.c_str());
    }
    return 0;
}

// Lua's messages begin with this and a line number.
constexpr char const* ChunkName = "=file";
constexpr char const* Prefix = "file:";

// The error on top of the stack, in one line, without the line number.
Mistake TakeError(lua_State* lua) {
    std::string text = lua_type(lua, -1) == LUA_TSTRING ? lua_tostring(lua, -1) : "the error is not a text";
    lua_settop(lua, 0);
    std::size_t const digits = std::string(Prefix).size();
    std::size_t const end = text.find(": ", digits);
    if (text.compare(0, digits, Prefix) != 0 || end == std::string::npos) {
        return Mistake(text);
    }
    return Mistake(text.substr(end + 2), std::atoi(text.c_str() + digits));
}

}  // namespace

LuaSandbox::LuaSandbox(std::vector<std::string> const& constructors, std::size_t mostMemory)
    : limits{0, mostMemory, MostInstructions, std::chrono::steady_clock::now() + LongestRun},
      lua(lua_newstate(Allocate, &limits), lua_close) {
    if (!lua) {
        throw Mistake("no memory for Lua");
    }
    lua_pushcfunction(lua.get(), Prepare);
    lua_pushlightuserdata(lua.get(), const_cast<std::vector<std::string>*>(&constructors));
    if (lua_pcall(lua.get(), 1, 0, 0) != LUA_OK) {
        throw TakeError(lua.get());
    }
    // For all its life: what evaluates an expression later may call functions of the file.
    lua_sethook(lua.get(), Check, LUA_MASKCOUNT, InstructionsPerCheck);
}

std::vector<ScriptValue> LuaSandbox::Run(std::string const& text) {
    Execute(text, 0);
    lua_rawgetp(lua.get(), LUA_REGISTRYINDEX, &DevicesKey);
    ScriptValue devices = ReadScriptValue(lua.get());
    return std::move(devices.list);
}

ScriptValue LuaSandbox::Evaluate(std::string const& expression) {
    Execute("return " + expression, 1);
    return ReadScriptValue(lua.get());
}

// Text only: precompiled code is not checked by Lua.
void LuaSandbox::Execute(std::string const& text, int results) {
    lua_State* const state = lua.get();
    if (luaL_loadbufferx(state, text.data(), text.size(), ChunkName, "t") != LUA_OK ||
        lua_pcall(state, 0, results, 0) != LUA_OK) {
        throw TakeError(state);
    }
}

}  // namespace simulator
