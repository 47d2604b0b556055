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
    SetInteger(L, "ReadId", variable.readId);
    if (variable.writeId != 0) {
        SetInteger(L, "WriteId", variable.writeId);
    }
    SetInteger(L, "Type", variable.type.Type);
    if (variable.type.Type == OpcUaType_DataValue) {
        SetInteger(L, "ElementType", variable.type.ElementType);
    }
    SetInteger(L, "ObjectType", variable.objectType->code);
    SetInteger(L, "ObjectProperties", variable.property->code);
    SetInteger(L, "ObjectNumber", variable.objectNumber);
}

}  // namespace

void PushDriverTable(lua_State* L, BlockConfig const& block) {
    luaL_checkstack(L, 4, "block");
    lua_createtable(L, 0, static_cast<int>(block.fields.size()) + 1);
    for (auto const& field : block.fields) {
        PushValue(L, field.second);
        lua_setfield(L, -2, field.first.c_str());
    }
    lua_createtable(L, static_cast<int>(block.variables.size()), 0);
    lua_Integer index = 0;
    for (VariableConfig const& variable : block.variables) {
        PushVariable(L, variable);
        lua_rawseti(L, -2, ++index);
    }
    lua_setfield(L, -2, "Vars");
}

}  // namespace workbench
