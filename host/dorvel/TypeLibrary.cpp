#include "TypeLibrary.h"

#include <lua.hpp>

#include "opcua/OpcUa_BuiltInType.h"

namespace dorvel {
namespace {

struct ElementaryType {
    char const* name;
    _OpcUa_BuiltInType type;
};

constexpr ElementaryType ElementaryTypes[] = {
    {"BOOL", OpcUaType_Boolean},  {"SINT", OpcUaType_SByte},  {"USINT", OpcUaType_Byte},
    {"BYTE", OpcUaType_Byte},     {"INT", OpcUaType_Int16},   {"UINT", OpcUaType_UInt16},
    {"WORD", OpcUaType_UInt16},   {"DINT", OpcUaType_Int32},  {"UDINT", OpcUaType_UInt32},
    {"DWORD", OpcUaType_UInt32},  {"LINT", OpcUaType_Int64},  {"ULINT", OpcUaType_UInt64},
    {"LWORD", OpcUaType_UInt64},  {"REAL", OpcUaType_Float},  {"LREAL", OpcUaType_Double},
    {"STRING", OpcUaType_String}, {"DT", OpcUaType_DateTime},
};

// Pushes an entry of the table on top of the stack; another type than this is a Lua error.
void RequireEntry(lua_State* L, char const* where, char const* key, int type) {
    lua_getfield(L, -1, key);
    if (lua_type(L, -1) != type) {
        luaL_error(L, "FBMetadata: %s.%s: expected a %s, got %s", where, key, lua_typename(L, type),
                   luaL_typename(L, -1));
    }
}

void CheckInteger(lua_State* L, char const* where, char const* key) {
    RequireEntry(L, where, key, LUA_TNUMBER);
    if (!lua_isinteger(L, -1)) {
        luaL_error(L, "FBMetadata: %s.%s: expected a whole number", where, key);
    }
    lua_pop(L, 1);
}

// A type is elementary, or a table that describes it.
void CheckType(lua_State* L, char const* where) {
    lua_getfield(L, -1, "Type");
    if (!lua_istable(L, -1) && !lua_isinteger(L, -1)) {
        luaL_error(L, "FBMetadata: %s.Type: expected the number or the table of a type", where);
    }
    lua_pop(L, 1);
}

// The key and the table of one variable are on top of the stack.
void CheckVariable(lua_State* L) {
    if (lua_type(L, -2) != LUA_TSTRING) {
        luaL_error(L, "FBMetadata: Vars: every key must be a name");
    }
    char const* const name = lua_tostring(L, -2);
    if (!lua_istable(L, -1)) {
        luaL_error(L, "FBMetadata: %s: expected a table, got %s", name, luaL_typename(L, -1));
    }
    CheckInteger(L, name, "Hash");
    CheckType(L, name);
    RequireEntry(L, name, "Retain", LUA_TBOOLEAN);
    lua_pop(L, 1);
}

// FBMetadata(table) returns the table when it describes a block type: Name, Hash and, by name, Vars with
// Hash, Type and Retain. Anything else is a Lua error.
int FBMetadata(lua_State* L) {
    luaL_checktype(L, 1, LUA_TTABLE);
    lua_settop(L, 1);
    RequireEntry(L, "type", "Name", LUA_TSTRING);
    if (lua_rawlen(L, -1) == 0) {
        luaL_error(L, "FBMetadata: type.Name is empty");
    }
    lua_settop(L, 1);
    CheckInteger(L, "type", "Hash");
    RequireEntry(L, "type", "Vars", LUA_TTABLE);
    lua_pushnil(L);
    while (lua_next(L, -2)) {
        CheckVariable(L);
        lua_pop(L, 1);
    }
    lua_settop(L, 1);
    return 1;
}

}  // namespace

void OpenTypes(lua_State* L) {
    lua_newtable(L);
    lua_newtable(L);
    for (ElementaryType const& type : ElementaryTypes) {
        lua_pushinteger(L, type.type);
        lua_setfield(L, -2, type.name);
    }
    lua_setfield(L, -2, "Elementary");
    lua_newtable(L);
    lua_setfield(L, -2, "StandardFB");
    lua_setglobal(L, "TYPES");
    lua_pushcfunction(L, FBMetadata);
    lua_setglobal(L, "FBMetadata");
}

}  // namespace dorvel
