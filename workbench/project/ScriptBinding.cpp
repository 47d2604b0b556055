#include "ScriptBinding.h"

#include <exception>
#include <lua.hpp>

#include "DriverTable.h"
#include "FieldReader.h"
#include "ProjectError.h"
#include "ScriptReader.h"
#include "ScriptState.h"

namespace workbench {

namespace {

constexpr lua_Number LongestDelay = 1e9;  // seconds
constexpr int TaskDepth = 1;
constexpr int BlockDepth = 4;  // a block, its list, a variable, its texts

// The lexical form of a value that a variable can have.
std::string TextOf(tools::ScriptValue const& value) {
    if (value.IsText()) {
        return value.text;
    }
    if (value.IsBoolean() || value.IsNumber()) {
        return value.Describe();
    }
    throw ProjectError("expected a number, a text or a boolean, got " + value.Describe());
}

Finding InScript(FindingCode code, ScriptCall const& call, char const* subject, std::string const& message) {
    return {code, call.place, {}, subject, {}, {}, message, {}};
}

}  // namespace

bool ScriptBinding::Install(lua_State* L) {
    lua_settop(L, 0);
    lua_getglobal(L, "pcall");
    lua_getglobal(L, "xpcall");
    catchers[0] = lua_tocfunction(L, 1);
    catchers[1] = lua_tocfunction(L, 2);
    lua_settop(L, 0);
    lua_pushcfunction(L, InstallNames);
    lua_pushlightuserdata(L, this);
    bool const installed = lua_pcall(L, 1, 0, 0) == LUA_OK;
    lua_settop(L, 0);
    return installed;
}

int ScriptBinding::InstallNames(lua_State* L) {
    lua_getglobal(L, "BACnet");
    lua_getfield(L, -1, "new");
    luaL_checktype(L, -1, LUA_TFUNCTION);

    // Scripts can make blocks but cannot access their inside.
    lua_pushvalue(L, 1);
    lua_insert(L, -2);
    lua_pushcclosure(L, MakeBlock, 2);
    lua_createtable(L, 0, 1);
    lua_insert(L, -2);
    lua_setfield(L, -2, "new");
    lua_setglobal(L, "BACnet");
    if (luaL_getmetatable(L, "BACnet") == LUA_TTABLE) {
        lua_pushboolean(L, 0);
        lua_setfield(L, -2, "__metatable");
    }

    lua_pushvalue(L, 1);
    lua_pushcclosure(L, MakeTask, 1);
    lua_setglobal(L, "Task");
    lua_pushvalue(L, 1);
    lua_pushcclosure(L, Set, 1);
    lua_setglobal(L, "Set");
    lua_pushvalue(L, 1);
    lua_pushcclosure(L, After, 1);
    lua_setglobal(L, "After");

    lua_createtable(L, 0, 0);
    lua_createtable(L, 0, 1);
    lua_pushvalue(L, 1);
    lua_pushcclosure(L, ReadParam, 1);
    lua_setfield(L, -2, "__index");
    lua_setmetatable(L, -2);
    lua_setglobal(L, "Param");
    return 0;
}

ScriptBinding& ScriptBinding::Self(lua_State* L) {
    return *static_cast<ScriptBinding*>(lua_touserdata(L, lua_upvalueindex(1)));
}

int ScriptBinding::ReadParam(lua_State* L) {
    std::string const* const value =
        lua_type(L, 2) == LUA_TSTRING ? Self(L).receiver.Param(lua_tostring(L, 2)) : nullptr;
    if (value) {
        lua_pushlstring(L, value->data(), value->size());
    } else {
        lua_pushnil(L);
    }
    return 1;
}

int ScriptBinding::RaiseMistake(lua_State* L) const {
    lua_pushlstring(L, mistake.data(), mistake.size());
    return lua_error(L);
}

int ScriptBinding::MakeTask(lua_State* L) {
    lua_settop(L, 1);
    return Self(L).AcceptTask(L) ? 0 : Self(L).RaiseMistake(L);
}

int ScriptBinding::MakeBlock(lua_State* L) {
    lua_settop(L, 1);
    BlockConfig const* const block = Self(L).AcceptBlock(L);
    if (!block) {
        return Self(L).RaiseMistake(L);
    }
    lua_pushvalue(L, lua_upvalueindex(2));
    PushDriverTable(L, *block);
    lua_call(L, 1, 1);
    return Self(L).AcceptMade() ? 1 : Self(L).RaiseMistake(L);
}

int ScriptBinding::Set(lua_State* L) {
    lua_settop(L, 2);
    return Self(L).AcceptSet(L) ? 0 : Self(L).RaiseMistake(L);
}

int ScriptBinding::After(lua_State* L) {
    lua_settop(L, 2);
    lua_Number const seconds = luaL_checknumber(L, 1);
    luaL_argcheck(L, seconds >= 0 && seconds <= LongestDelay, 1, "expected 0 to 1000000000 seconds");
    luaL_checktype(L, 2, LUA_TFUNCTION);
    int const reference = luaL_ref(L, LUA_REGISTRYINDEX);
    return Self(L).AcceptAfter(seconds, reference) ? 0 : Self(L).RaiseMistake(L);
}

// Lets no exception pass, since Lua is the caller. When there is no memory for the text of the exception, a
// short text that needs none replaces it.
template <class Body>
bool ScriptBinding::Accept(Body const& body) {
    try {
        body();
        return true;
    } catch (std::exception const& reason) {
        try {
            mistake = reason.what();
        } catch (std::exception const&) {
            mistake = "out of memory";
        }
    }
    return false;
}

// What a coroutine raises goes to the function that resumes it.
bool ScriptBinding::IsCaught(lua_State* L) const {
    if (lua_checkstack(L, 1) == 0) {
        return true;
    }
    bool isCaught = lua_pushthread(L) == 0;
    lua_pop(L, 1);
    lua_Debug activation;
    for (int level = 1; !isCaught && lua_getstack(L, level, &activation) != 0; ++level) {
        lua_getinfo(L, "f", &activation);
        lua_CFunction const function = lua_tocfunction(L, -1);
        isCaught = function && (function == catchers[0] || function == catchers[1]);
        lua_pop(L, 1);
    }
    return isCaught;
}

ScriptCall ScriptBinding::CallOf(lua_State* L) const {
    return {L, ScriptState::CurrentPlace(L), IsCaught(L)};
}

bool ScriptBinding::AcceptSet(lua_State* L) {
    return Accept([&] {
        ScriptCall const call = CallOf(L);
        std::string mistakeInSet;
        try {
            tools::ScriptValue const name = tools::ReadValue(L, 1, 0, room);
            if (!name.IsText()) {
                throw ProjectError("expected \"Block.Variable\", got " + name.Describe());
            }
            receiver.SetVariable(name.text, TextOf(tools::ReadValue(L, 2, 0, room)), call.place);
        } catch (std::exception const& reason) {
            mistakeInSet = reason.what();
        }
        if (!mistakeInSet.empty()) {
            receiver.Report({InScript(FindingCode::BadSet, call, "Set", mistakeInSet)}, call);
        }
    });
}

bool ScriptBinding::AcceptAfter(double seconds, int reference) {
    return Accept([&] { InContext("After: ", [&] { receiver.CallAfter(seconds, reference); }); });
}

bool ScriptBinding::AcceptTask(lua_State* L) {
    return Accept([&] {
        ScriptCall const call = CallOf(L);
        if (auto const task = ReadTable(call, TaskDepth)) {
            receiver.AddTask(*task, call);
        }
    });
}

// The argument; without a value if it cannot be read and the script goes on.
std::optional<tools::ScriptValue> ScriptBinding::ReadTable(ScriptCall const& call, int depth) {
    std::string unreadable;
    try {
        return tools::ReadValue(call.L, 1, depth, room);
    } catch (std::exception const& reason) {
        unreadable = reason.what();
    }
    receiver.Report({InScript(FindingCode::UnreadableTable, call, "", unreadable)}, call);
    return std::nullopt;
}

BlockConfig const* ScriptBinding::AcceptBlock(lua_State* L) {
    static BlockConfig const none;
    BlockConfig const* accepted = nullptr;
    Accept([&] {
        ScriptCall const call = CallOf(L);
        auto const block = ReadTable(call, BlockDepth);
        accepted = block ? &receiver.AddBlock(*block, call) : &none;
    });
    return accepted;
}

bool ScriptBinding::AcceptMade() {
    return Accept([&] {
        if (!receiver.BlockMade()) {
            throw ProjectError("the add-in has not made a block");
        }
    });
}

}  // namespace workbench
