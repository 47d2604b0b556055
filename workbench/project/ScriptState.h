#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "LuaState.h"
#include "Place.h"

namespace workbench {

// A Lua state with the ordinary libraries for a project. Left out are the ways past its limits and into the
// interpreter's inside: the library debug, libraries in C, precompiled chunks and os.exit. print writes to
// standard error. Other files of the project are found beside it, whatever the current directory is: by
// require, and by a relative name for loadfile and dofile.
class ScriptState : public tools::LuaState {
public:
    // folder is that of the project: "" for the current directory, otherwise with "/" at its end.
    ScriptState(tools::LuaLimits const& scriptLimits, std::string const& folder);

    // The file and line that this Lua thread is executing, of the innermost function in Lua.
    static Place CurrentPlace(lua_State* L);

    // The files that the script has loaded so far, in that order, without the first ones. Raises no Lua
    // error.
    static std::vector<std::string> LoadedFiles(lua_State* L, std::size_t first);
};

}  // namespace workbench
