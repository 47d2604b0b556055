#pragma once

#include <lua.hpp>
#include <string>

namespace test {

// A Lua state with the standard libraries.
class LuaState {
public:
    LuaState() : state(luaL_newstate()) { luaL_openlibs(state); }
    ~LuaState() { lua_close(state); }
    LuaState(LuaState const&) = delete;
    LuaState& operator=(LuaState const&) = delete;

    operator lua_State*() const { return state; }

    // Runs a chunk; returns the text of its error, empty without one.
    std::string Run(std::string const& chunk) {
        if (luaL_dostring(state, chunk.c_str()) == LUA_OK) {
            lua_settop(state, 0);
            return "";
        }
        std::string const message = lua_tostring(state, -1);
        lua_settop(state, 0);
        return message;
    }

    // The value of an expression as tostring gives it, or its error.
    std::string Eval(std::string const& expression) {
        std::string const message = Run("result = tostring(" + expression + ")");
        if (!message.empty()) {
            return message;
        }
        lua_getglobal(state, "result");
        std::string const text = lua_tostring(state, -1);
        lua_pop(state, 1);
        return text;
    }

private:
    lua_State* state;
};

}  // namespace test
