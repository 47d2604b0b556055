#include "DriverTable.h"

#include <lua.hpp>

namespace workbench {

namespace {

void SetInteger(lua_State* L, char const* name, long long value) {
    lua_pushinteger(L, value);
    lua_setfield(L, -2, name);
}

void PushValue(lua_State* L, BlockConfig::FieldValue const& value) {
    if (auto const* number = std::get_if<long long>(&value)) {
        lua_pushinteger(L, *number);
    } else if (auto const* boolean = std::get_if<bool>(&value)) {
        lua_pushboolean(L, *boolean);
    } else if (auto const* text = std::get_if<std::string>(&value)) {
        lua_pushlstring(L, text->data(), text->size());
    }
}

void PushVariable(lua_State* L, VariableConfig const& variable) {
    lua_createtable(L, 0, 7);
    SetInteger(L, "ReadId", variable.ReadId);
    if (variable.Write) {
        SetInteger(L, "WriteId", variable.WriteId);
    }
    SetInteger(L, "Type", variable.Type.Type);
    if (variable.Type.Type == OpcUaType_DataValue) {
        SetInteger(L, "ElementType", variable.Type.ElementType);
    }
    SetInteger(L, "ObjectType", variable.ObjectType->Code);
    SetInteger(L, "ObjectProperties", variable.Property->Code);
    SetInteger(L, "ObjectNumber", variable.ObjectNumber);
}

}  // namespace

void PushDriverTable(lua_State* L, BlockConfig const& block) {
    luaL_checkstack(L, 4, "block");
    lua_createtable(L, 0, static_cast<int>(block.Fields.size()) + 1);
    for (auto const& field : block.Fields) {
        PushValue(L, field.second);
        lua_setfield(L, -2, field.first.c_str());
    }
    lua_createtable(L, static_cast<int>(block.Variables.size()), 0);
    lua_Integer place = 0;
    for (VariableConfig const& variable : block.Variables) {
        PushVariable(L, variable);
        lua_rawseti(L, -2, ++place);
    }
    lua_setfield(L, -2, "Vars");
}

}  // namespace workbench
