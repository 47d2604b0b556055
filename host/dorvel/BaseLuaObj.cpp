#include "dorvel/BaseLuaObj.h"

#include <cstring>
#include <exception>
#include <lua.hpp>

#include "LuaCall.h"
#include "dorvel/Runtime.h"
#include "dorvel/ScadaProtocol.h"

namespace {

std::size_t TextLength(LuaObjState const& state) {
    std::lock_guard<std::mutex> const lock(state.Mutex);
    return state.ErrorText.size();
}

// Copies as much of the text as fits; returns the length.
std::size_t CopyText(LuaObjState const& state, char* room, std::size_t size) {
    std::lock_guard<std::mutex> const lock(state.Mutex);
    return state.ErrorText.copy(room, size);
}

// The text is copied straight into Lua's memory: no std::string may be alive while Lua allocates, since a Lua
// error would skip its destructor.
void PushErrorText(lua_State* L, LuaObjState const& state) {
    std::size_t const size = TextLength(state);
    luaL_Buffer buffer;
    char* const room = luaL_buffinitsize(L, &buffer, size);
    luaL_pushresultsize(&buffer, CopyText(state, room, size));
}

void PushFault(lua_State* L, LuaObjState const& state) {
    std::lock_guard<std::mutex> const lock(state.Mutex);
    if (state.Finished) {
        lua_pushboolean(L, state.Fault);
    } else {
        lua_pushnil(L);
    }
}

}  // namespace

BaseLuaObj::~BaseLuaObj() = default;

bool BaseLuaObj::check(lua_State* L, int index) {
    char const* const key = lua_tolstring(L, index, nullptr);
    return !key || CheckIndexProlog(L, key, &state) != 0;
}

void BaseLuaObj::Init(lua_State* L) {
    auto* const block = dynamic_cast<ScadaProtocol*>(this);
    dorvel::Runtime* const runtime = L ? dorvel::FindRuntime(L) : nullptr;
    if (!runtime || !block) {
        return;
    }
    luaL_checktype(L, -1, LUA_TUSERDATA);
    luaL_checkstack(L, 1, "block");
    lua_pushvalue(L, -1);
    int const reference = luaL_ref(L, LUA_REGISTRYINDEX);
    dorvel::GuardLua(L, [&] {
        try {
            runtime->Enter(*block, reference);
        } catch (std::exception const&) {
            luaL_unref(L, LUA_REGISTRYINDEX, reference);
            throw;
        }
        return 0;
    });
}

int CheckIndexProlog(lua_State* L, char const* key, void* state) {
    bool const isFault = std::strcmp(key, "Fault") == 0;
    if (!state || (!isFault && std::strcmp(key, "ErrorText") != 0)) {
        return 0;
    }
    if (lua_gettop(L) > 2) {
        return luaL_error(L, "'%s' cannot be set", key);
    }
    luaL_checkstack(L, 1, key);
    auto const& kept = *static_cast<LuaObjState const*>(state);
    if (isFault) {
        PushFault(L, kept);
    } else {
        PushErrorText(L, kept);
    }
    return 1;
}
