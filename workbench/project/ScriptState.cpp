#include "ScriptState.h"

#include <lua.hpp>

namespace workbench {

namespace {

// Gets the folder of the project, and returns the list of loaded files.
constexpr char Prelude[] = R"(
local folder = ...
local load, loadfile, error, tostring, pack = load, loadfile, error, tostring, table.pack
local stderr, concat, open, sub, type = io.stderr, table.concat, io.open, string.sub, type
local files, noted = {}, {}
local function beside(name)
    if type(name) ~= "string" or folder == "" or sub(name, 1, 1) == "/" then return name end
    local file = open(folder .. name)
    if file then file:close() end
    return file and folder .. name or name
end
local function loadtext(name, ...)
    if type(name) == "string" and not noted[name] then
        noted[name] = true
        files[#files + 1] = name
    end
    return loadfile(name, "t", ...)
end
function _G.load(chunk, name, _, ...) return load(chunk, name, "t", ...) end
function _G.loadfile(name, _, ...) return loadtext(beside(name), ...) end
function _G.dofile(name)
    local chunk, message = loadtext(beside(name))
    if not chunk then error(message, 0) end
    return chunk()
end
function _G.print(...)
    local texts = pack(...)
    for i = 1, texts.n do texts[i] = tostring(texts[i]) end
    stderr:write(concat(texts, "\t"), "\n")
end
local searchpath, preloaded = package.searchpath, package.searchers[1]
package.path = folder .. "?.lua;" .. folder .. "?/init.lua;" .. package.path
package.searchers = {preloaded, function(name)
    local file, message = searchpath(name, package.path)
    if not file then return message end
    return assert(loadtext(file)), file
end}
os.exit, string.dump, package.loadlib, package.cpath = nil, nil, nil, ""
return files
)";

// The address is the registry's key of that list.
char const FilesKey = 0;

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
    lua_pushstring(L, static_cast<char const*>(lua_touserdata(L, 1)));
    lua_call(L, 1, 1);
    lua_rawsetp(L, LUA_REGISTRYINDEX, &FilesKey);
    return 0;
}

}  // namespace

ScriptState::ScriptState(tools::LuaLimits const& scriptLimits, std::string const& folder)
    : LuaState(scriptLimits, "the project", OpenLibraries, folder.c_str()) {}

Place ScriptState::CurrentPlace(lua_State* L) {
    lua_Debug activation;
    if (!tools::FindScript(L, activation)) {
        return {};
    }
    bool const isFile = *activation.source == '@';
    return {isFile ? activation.source + 1 : activation.short_src, activation.currentline};
}

std::vector<std::string> ScriptState::LoadedFiles(lua_State* L, std::size_t first) {
    std::vector<std::string> files;
    if (lua_checkstack(L, 2) == 0) {
        return files;
    }
    int const top = lua_gettop(L);
    lua_rawgetp(L, LUA_REGISTRYINDEX, &FilesKey);
    auto const count = lua_istable(L, -1) ? static_cast<lua_Integer>(lua_rawlen(L, -1)) : 0;
    for (auto i = static_cast<lua_Integer>(first) + 1; i <= count; ++i) {
        if (lua_rawgeti(L, top + 1, i) == LUA_TSTRING) {
            files.emplace_back(lua_tostring(L, -1));
        }
        lua_settop(L, top + 1);
    }
    lua_settop(L, top);
    return files;
}

}  // namespace workbench
