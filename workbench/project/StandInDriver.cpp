#include "StandInDriver.h"

#include <lua.hpp>

namespace workbench {

namespace {

constexpr char TypeName[] = "BACnet";
constexpr int Fields = 1;  // the user value that has them

int New(lua_State* L) {
    luaL_checktype(L, 1, LUA_TTABLE);
    lua_newuserdatauv(L, 0, Fields);
    lua_pushvalue(L, 1);
    lua_setiuservalue(L, -2, Fields);
    luaL_setmetatable(L, TypeName);
    return 1;
}

int Get(lua_State* L) {
    luaL_checkudata(L, 1, TypeName);
    lua_getiuservalue(L, 1, Fields);
    lua_pushvalue(L, 2);
    lua_rawget(L, -2);
    return 1;
}

int Set(lua_State* L) {
    luaL_checkudata(L, 1, TypeName);
    lua_getiuservalue(L, 1, Fields);
    lua_pushvalue(L, 2);
    lua_pushvalue(L, 3);
    lua_rawset(L, -3);
    return 0;
}

int Call(lua_State* L) {
    lua_pushboolean(L, 0);
    return 1;
}

int Open(lua_State* L) {
    constexpr luaL_Reg operations[] = {
        {"__index", Get}, {"__newindex", Set}, {"__call", Call}, {nullptr, nullptr}};
    luaL_newmetatable(L, TypeName);
    luaL_setfuncs(L, operations, 0);
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
