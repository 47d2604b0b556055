#include "StandInDriver.h"

#include <lua.hpp>

namespace workbench {

namespace {

constexpr char TypeName[] = "BACnet";

int New(lua_State* L) {
    lua_newuserdatauv(L, 0, 0);
    luaL_setmetatable(L, TypeName);
    return 1;
}

int Open(lua_State* L) {
    luaL_newmetatable(L, TypeName);
    lua_createtable(L, 0, 1);
    lua_pushcfunction(L, New);
    lua_setfield(L, -2, "new");
    lua_setglobal(L, TypeName);
    return 0;
}

}  // namespace

bool OpenStandInDriver(lua_State* L) {
    lua_pushcfunction(L, Open);
    bool const opened = lua_pcall(L, 0, 0, 0) == LUA_OK;
    lua_settop(L, 0);
    return opened;
}

}  // namespace workbench
