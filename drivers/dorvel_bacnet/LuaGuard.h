#pragma once

#include <lua.hpp>

#include <cstdio>
#include <exception>

namespace SCADA_API {

// Runs the body of a Lua C function and returns its result. Lua leaves such a function by a jump, and no
// exception may leave it. So an exception of the body is caught, and after every C++ object is destroyed its
// text, up to 255 characters, is raised as a Lua error. A Lua error inside the body jumps out of it: the body
// must hold nothing with a destructor while it calls Lua.
//
// Every exception of a block is a std::exception. Nothing else is caught: a Lua library that is built as C++
// throws its errors as exceptions of its own type, and those must reach it.
template <class Body>
int GuardLuaCall(lua_State* L, Body body) {
    char text[256];
    try {
        return body();
    } catch (std::exception const& failure) {
        std::snprintf(text, sizeof text, "%s", failure.what());
    }
    return luaL_error(L, "%s", text);
}

}  // namespace SCADA_API
