#pragma once

#include <lua.hpp>

#include <cstdio>
#include <exception>

namespace SCADA_API {

// Runs the body of a Lua C function and gives its result. Lua leaves such a function by a jump and must not
// be left by an exception: one that the body throws is caught, and only when everything of C++ is out of the
// way its text is raised as a Lua error (the text up to 255 characters). A Lua error inside the body jumps
// out of it, so the body holds nothing with a destructor while it calls Lua.
//
// Every exception that can come out of a block here is a std::exception, and nothing else is caught: a Lua
// that was built as C++ raises its errors as exceptions of a type of its own, which have to reach it.
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
