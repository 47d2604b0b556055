#include "ScriptState.h"

#include <cstring>
#include <lua.hpp>

namespace workbench {

namespace {

// Gets the folder of the project and the function Chain, and returns the list of loaded files.
constexpr char Prelude[] = R"(
local folder, chain = ...
local load, loadfile, error, tostring, pack = load, loadfile, error, tostring, table.pack
local stderr, concat, open, sub, type = io.stderr, table.concat, io.open, string.sub, type
local match, package, Caller = string.match, package, 3
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
local startpath = folder .. "?.lua;" .. folder .. "?/init.lua;" .. package.path
package.path = startpath
local function notfound(name, message)
    return "module '" .. name .. "' not found: there is no file " .. (match(message, "'(.-)'") or name) ..
        (package.path == startpath and " beside the project" or "")
end
package.searchers = {preloaded, function(name)
    if type(package.path) ~= "string" then error("package.path is not a text", Caller) end
    local file, message = searchpath(name, package.path)
    if not file then error(notfound(name, message), Caller) end
    local files = chain(file, folder)
    if files then error(files, Caller) end
    local chunk, mistake = loadtext(file)
    if not chunk then error(mistake, 0) end
    return chunk, file
end}
os.exit, string.dump, package.loadlib, package.cpath = nil, nil, nil, ""
return files
)";

// The address is the registry's key of that list.
char const FilesKey = 0;

// A cycle of files is found among so many activations.
constexpr int DeepestChain = 10'000;

// True if that activation runs the file, and not a function in it.
bool Runs(lua_State* L, lua_Debug& activation, char const* file) {
    lua_getinfo(L, "S", &activation);
    bool const isFile = *activation.what == 'm' && *activation.source == '@';
    return isFile && (file == nullptr || std::strcmp(activation.source + 1, file) == 0);
}

// Lua function: chain(file, folder) is "a.lua requires itself: a.lua -> b.lua -> a.lua" if the file is being
// run already, and nil otherwise.
int Chain(lua_State* L) {
    char const* const file = luaL_checkstring(L, 1);
    std::size_t folderSize = 0;
    char const* const folder = luaL_checklstring(L, 2, &folderSize);
    auto const pushName = [&](char const* path) {
        bool const isBeside = std::strncmp(path, folder, folderSize) == 0;
        lua_pushstring(L, isBeside ? path + folderSize : path);
    };
    lua_Debug activation;
    int level = 1;
    while (level < DeepestChain && lua_getstack(L, level, &activation) != 0 && !Runs(L, activation, file)) {
        ++level;
    }
    if (level == DeepestChain || lua_getstack(L, level, &activation) == 0) {
        return 0;
    }
    pushName(file);
    lua_pushliteral(L, " requires itself");
    lua_concat(L, 2);
    char const* separator = ": ";
    for (; level >= 1; --level) {
        if (lua_getstack(L, level, &activation) != 0 && Runs(L, activation, nullptr)) {
            lua_pushstring(L, separator);
            pushName(activation.source + 1);
            lua_concat(L, 3);
            separator = " -> ";
        }
    }
    lua_pushstring(L, separator);
    pushName(file);
    lua_concat(L, 3);
    return 1;
}

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
    lua_pushcfunction(L, Chain);
    lua_call(L, 2, 1);
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
