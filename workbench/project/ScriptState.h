#pragma once

#include "LuaState.h"
#include "Project.h"

namespace workbench {

// A Lua state with the ordinary libraries for a project. Left out are the ways past its limits and into the
// interpreter's inside: the library debug, libraries in C, precompiled chunks and os.exit. print writes to
// standard error.
class ScriptState : public tools::LuaState {
public:
    explicit ScriptState(tools::LuaLimits const& scriptLimits);

    // The file and line that this Lua thread is executing, of the innermost function in Lua.
    static Place CurrentPlace(lua_State* L);
};

}  // namespace workbench
