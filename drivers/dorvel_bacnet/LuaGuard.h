#pragma once

#include <lua.hpp>

#include <cstdio>
#include <exception>

namespace SCADA_API {

// Runs the body of a Lua C function and gives its result. Lua leaves such a function by a jump and must not
// be left by an exception: one that the body throws is caught, and only when everything of C++ is out of the
// way its text is raised as a Lua error (the text up to 255 characters). A Lua error inside the body jumps
// out of it, so the body holds nothing with a destructor while it calls Lua.
template <class Body>
int GuardLuaCall(lua_State* L, Body body) {
    char text[256];
    try {
        return body();
    } catch (std::exception const& failure) {
        std::snprintf(text, sizeof text, "%s", failure.what());
    } catch (...) {
        std::snprintf(text, sizeof text, "Unknown error");
    }
    return luaL_error(L, "%s", text);
}

}  // namespace SCADA_API
