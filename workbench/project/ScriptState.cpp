#include "ScriptState.h"

#include <lua.hpp>

namespace workbench {

namespace {

constexpr char Prelude[] = R"(
local load, loadfile, error, tostring, pack = load, loadfile, error, tostring, table.pack
local stderr, concat = io.stderr, table.concat
function _G.load(chunk, name, _, ...) return load(chunk, name, "t", ...) end
function _G.loadfile(name, _, ...) return loadfile(name, "t", ...) end
function _G.dofile(name)
    local chunk, message = loadfile(name, "t")
    if not chunk then error(message, 0) end
    return chunk()
end
function _G.print(...)
    local texts = pack(...)
    for i = 1, texts.n do texts[i] = tostring(texts[i]) end
    stderr:write(concat(texts, "\t"), "\n")
end
local searchpath, preloaded = package.searchpath, package.searchers[1]
package.searchers = {preloaded, function(name)
    local file, message = searchpath(name, package.path)
    if not file then return message end
    return assert(loadfile(file, "t")), file
end}
os.exit, string.dump, package.loadlib, package.cpath = nil, nil, nil, ""
)";

int OpenLibraries(lua_State* L) {
    static constexpr luaL_Reg libraries[] = {
        {LUA_GNAME, luaopen_base},          {LUA_LOADLIBNAME, luaopen_package},
        {LUA_COLIBNAME, luaopen_coroutine}, {LUA_TABLIBNAME, luaopen_table},
        {LUA_IOLIBNAME, luaopen_io},        {LUA_OSLIBNAME, luaopen_os},
        {LUA_STRLIBNAME, luaopen_string},   {LUA_MATHLIBNAME, luaopen_math},
        {LUA_UTF8LIBNAME, luaopen_utf8},
    };
    for (luaL_Reg const& library : libraries) {
        luaL_requiref(L, library.name, library.func, 1);
        lua_pop(L, 1);
    }
    if (luaL_loadbufferx(L, Prelude, sizeof Prelude - 1, "=prelude", "t") != LUA_OK) {
        return lua_error(L);
    }
    lua_call(L, 0, 0);
    return 0;
}

}  // namespace

ScriptState::ScriptState(tools::LuaLimits const& scriptLimits)
    : LuaState(scriptLimits, "the project", OpenLibraries) {}

Place ScriptState::CurrentPlace(lua_State* L) {
    lua_Debug activation;
    return tools::FindScript(L, activation) ? Place{activation.short_src, activation.currentline} : Place();
}

}  // namespace workbench
