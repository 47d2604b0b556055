#include "LuaState.h"

#include <cstdlib>
#include <lua.hpp>
#include <new>

namespace tools {

namespace {

// One instruction on a long text can take milliseconds.
constexpr int InstructionsPerCheck = 100;

std::string LimitReached(std::string const& subject, long long limit, char const* unit) {
    return subject + " has run for " + std::to_string(limit) + " " + unit + ", the limit, and has not ended";
}

}  // namespace

LuaState::LuaState(LuaLimits const& luaLimits, std::string const& subject, int (*open)(lua_State*),
                   void const* argument)
    : limits(luaLimits),
      timeExceeded(LimitReached(subject, limits.time.count(), "ms")),
      instructionsExceeded(LimitReached(subject, limits.instructions, "instructions")),
      L(lua_newstate(Allocate, this)) {
    if (!L) {
        throw std::bad_alloc();
    }
    lua_pushcfunction(L, open);
    lua_pushlightuserdata(L, const_cast<void*>(argument));
    if (lua_pcall(L, 1, 0, 0) != LUA_OK) {
        lua_close(L);
        throw std::bad_alloc();
    }
}

LuaState::~LuaState() {
    lua_close(L);
}

void* LuaState::Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize) {
    auto& state = *static_cast<LuaState*>(self);
    std::size_t const before = block ? oldSize : 0;  // without a block Lua gives the kind of object here
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

// The message of the limit that is exceeded, null if none is.
char const* LuaState::Exceeded() {
    if (limits.instructions > 0 && (instructionsLeft -= InstructionsPerCheck) <= 0) {
        return instructionsExceeded.c_str();
    }
    return std::chrono::steady_clock::now() < deadline ? nullptr : timeExceeded.c_str();
}

void LuaState::Check(lua_State* L, lua_Debug*) {
    void* self = nullptr;
    lua_getallocf(L, &self);
    char const* const message = static_cast<LuaState*>(self)->Exceeded();
    if (!message) {
        return;
    }
    lua_sethook(L, Check, LUA_MASKCOUNT, 1);
    luaL_where(L, 0);
    lua_pushstring(L, message);
    lua_concat(L, 2);
    lua_error(L);
}

void LuaState::StartClock() {
    deadline = std::chrono::steady_clock::now() + limits.time;
    instructionsLeft = limits.instructions;
    lua_sethook(L, Check, LUA_MASKCOUNT, InstructionsPerCheck);
}

void LuaState::StopClock() {
    lua_sethook(L, nullptr, 0, 0);
}

// The error on top of the stack, which is then empty.
std::string LuaState::TakeError() {
    std::string error;
    if (lua_type(L, -1) == LUA_TSTRING) {
        std::size_t length = 0;
        char const* const text = lua_tolstring(L, -1, &length);
        error.assign(text, length);
    } else {
        error = std::string("the script raised an error that is not a text but a ") + luaL_typename(L, -1);
    }
    lua_settop(L, 0);
    return error;
}

std::string LuaState::Run(std::string const& text, std::string const& name, int results) {
    bool const succeeded = luaL_loadbufferx(L, text.data(), text.size(), name.c_str(), "t") == LUA_OK &&
                           lua_pcall(L, 0, results, 0) == LUA_OK;
    return succeeded ? std::string() : TakeError();
}

std::string LuaState::Call(int reference) {
    lua_rawgeti(L, LUA_REGISTRYINDEX, reference);
    luaL_unref(L, LUA_REGISTRYINDEX, reference);
    return lua_pcall(L, 0, 0, 0) == LUA_OK ? std::string() : TakeError();
}

bool FindScript(lua_State* L, lua_Debug& activation) {
    for (int level = 1; lua_getstack(L, level, &activation) != 0; ++level) {
        lua_getinfo(L, "Sl", &activation);
        if (activation.currentline > 0) {
            return true;
        }
    }
    return false;
}

}  // namespace tools
