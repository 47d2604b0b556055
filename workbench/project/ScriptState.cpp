#include "ScriptState.h"

#include <cstdlib>
#include <lua.hpp>
#include <new>

namespace workbench {

namespace {

constexpr int InstructionsPerCheck = 10000;

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

std::string ErrorText(lua_State* L) {
    if (lua_type(L, -1) == LUA_TSTRING) {
        std::size_t length = 0;
        char const* const text = lua_tolstring(L, -1, &length);
        return std::string(text, length);
    }
    return std::string("the script raised an error that is not a text but a ") + luaL_typename(L, -1);
}

}  // namespace

int ScriptState::OpenLibraries(lua_State* L) {
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

ScriptState::ScriptState(ScriptLimits scriptLimits) : limits(scriptLimits), L(lua_newstate(Allocate, this)) {
    if (!L) {
        throw std::bad_alloc();
    }
    lua_pushcfunction(L, OpenLibraries);
    if (lua_pcall(L, 0, 0, 0) != LUA_OK) {
        lua_close(L);
        throw std::bad_alloc();
    }
}

ScriptState::~ScriptState() {
    lua_close(L);
}

void* ScriptState::Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize) {
    auto& state = *static_cast<ScriptState*>(self);
    std::size_t const before = block ? oldSize : 0;  // without a block Lua passes the kind of object here
    if (newSize == 0) {
        std::free(block);
        state.used -= before;
        return nullptr;
    }
    if (newSize > before && newSize - before > state.limits.memory - state.used) {
        return nullptr;
    }
    void* const moved = std::realloc(block, newSize);
    if (moved) {
        state.used = state.used - before + newSize;
    }
    return moved;
}

void ScriptState::CheckClock(lua_State* L, lua_Debug*) {
    void* self = nullptr;
    lua_getallocf(L, &self);
    auto const& state = *static_cast<ScriptState*>(self);
    if (std::chrono::steady_clock::now() < state.deadline) {
        return;
    }
    lua_sethook(L, CheckClock, LUA_MASKCOUNT, 1);
    luaL_where(L, 0);
    lua_pushfstring(L, "the project has run for %d ms, the limit, and has not ended",
                    static_cast<int>(state.limits.time.count()));
    lua_concat(L, 2);
    lua_error(L);
}

void ScriptState::StartClock() {
    deadline = std::chrono::steady_clock::now() + limits.time;
    lua_sethook(L, CheckClock, LUA_MASKCOUNT, InstructionsPerCheck);
}

void ScriptState::StopClock() {
    lua_sethook(L, nullptr, 0, 0);
}

std::string ScriptState::Run(std::string const& text, std::string const& name) {
    bool const failed = luaL_loadbufferx(L, text.data(), text.size(), name.c_str(), "t") != LUA_OK ||
                        lua_pcall(L, 0, 0, 0) != LUA_OK;
    std::string mistake = failed ? ErrorText(L) : std::string();
    lua_settop(L, 0);
    return mistake;
}

std::string ScriptState::Call(int reference) {
    lua_rawgeti(L, LUA_REGISTRYINDEX, reference);
    luaL_unref(L, LUA_REGISTRYINDEX, reference);
    std::string mistake = lua_pcall(L, 0, 0, 0) == LUA_OK ? std::string() : ErrorText(L);
    lua_settop(L, 0);
    return mistake;
}

Place ScriptState::CurrentPlace(lua_State* L) {
    lua_Debug activation;
    for (int level = 1; lua_getstack(L, level, &activation); ++level) {
        lua_getinfo(L, "Sl", &activation);
        if (activation.currentline > 0) {
            return {activation.short_src, activation.currentline};
        }
    }
    return {};
}

}  // namespace workbench
