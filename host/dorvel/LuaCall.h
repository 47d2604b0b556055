#pragma once

#include <cstdio>
#include <exception>
#include <lua.hpp>
#include <stdexcept>
#include <string>

namespace dorvel {

// Calls between C++ and Lua. Lua leaves a function by a jump that runs no destructors, and no exception may
// pass through its C code. Where Lua is built as C++, its errors are exceptions of its own type, which must
// reach it. So only std::exception is caught here, and nothing else is thrown.

// Runs the body of a function that Lua called, and returns its result. A std::exception becomes a Lua error
// with its text (up to 511 octets), raised after all objects of the body are destroyed. While the body holds
// objects with destructors, it calls only Lua functions that cannot fail.
template <class Body>
int GuardLua(lua_State* L, Body const& body) {
    char text[512];
    try {
        return body();
    } catch (std::exception const& failure) {
        std::snprintf(text, sizeof text, "%s", failure.what());
    }
    return luaL_error(L, "%s", text);
}

// Calls a body in which Lua errors may occur; an error becomes a std::runtime_error with its text. The body
// starts with an empty stack of LUA_MINSTACK free slots, leaves nothing on it, and holds no objects with
// destructors.
template <class Body>
void ProtectLua(lua_State* L, Body const& body) {
    lua_CFunction const run = [](lua_State* state) {
        auto const* const self = static_cast<Body const*>(lua_touserdata(state, 1));
        lua_settop(state, 0);
        return GuardLua(state, [self] {
            (*self)();
            return 0;
        });
    };
    if (!lua_checkstack(L, 2)) {
        throw std::runtime_error("the Lua stack is full");
    }
    lua_pushcfunction(L, run);
    lua_pushlightuserdata(L, const_cast<Body*>(&body));
    if (lua_pcall(L, 1, 0, 0) != LUA_OK) {
        char const* const text = lua_type(L, -1) == LUA_TSTRING ? lua_tostring(L, -1) : "Unknown error";
        std::string const message = text;
        lua_pop(L, 1);
        throw std::runtime_error(message);
    }
}

}  // namespace dorvel
