#pragma once

#include <lua.hpp>

#include <algorithm>
#include <cstring>
#include <new>
#include <sstream>
#include <string>

#include "LuaGuard.h"
#include "dorvel/ScadaFields.h"
#include "dorvelshare/Trace.h"

namespace SCADA_API {

// Makes T, a ScadaProtocol, a Lua type and a function-block type. T has _ShortName(), the name of the Lua
// library and of the metatable; _FullName(), the name of the block type; and AddFields(ScadaFields&).
//
// An object lives inside a full userdata: New constructs it there, GC destroys it there. Every operation but
// RegFBType and MetaTable is a Lua C function. An exception of T becomes a Lua error. A Lua error leaves no
// C++ object undestroyed, as none with a destructor is in scope when Lua can raise one.
template <class T>
class ScadaObj {
public:
    // The fields of all objects of the type. The first RegFBType of the process adds them.
    static inline ScadaFields fields;

    // new(table): a block with the fields of the table.
    static int New(lua_State* L);
    // The value of a field, the function "__clone", or what the host offers for every block. A key without a
    // text is returned itself.
    static int Get(lua_State* L);
    static int Set(lua_State* L);
    static int Call(lua_State* L);
    // Returns a table of all fields.
    static int Clone(lua_State* L);
    // Destroys the object. The userdata then no longer has the type.
    static int GC(lua_State* L);
    // The number of fields, including those without a type.
    static int Length(lua_State* L);

    // Registers the type in a Lua state: metatable, library and block type. Returns -1, with a line in the
    // log, if the host does not accept the block type. It must not be called from Lua.
    static int RegFBType(lua_State* L);
    // The Lua text that declares the block type.
    static std::string MetaTable();

private:
    static T* GetUserObject(lua_State* L);
    static bool RunMetaTable(lua_State* L);
    static bool IsFunction(char const* name);
};

template <class T>
T* ScadaObj<T>::GetUserObject(lua_State* L) {
    static std::string const expected = std::string(T::_ShortName()) + "expected.";
    void* object = luaL_checkudata(L, 1, T::_ShortName());
    if (!object) {
        luaL_argerror(L, 1, expected.c_str());
    }
    return static_cast<T*>(object);
}

template <class T>
int ScadaObj<T>::New(lua_State* L) {
    if (!L) {
        return 0;
    }
    luaL_checktype(L, std::max(1, lua_gettop(L)), LUA_TTABLE);
    void* room = lua_newuserdatauv(L, sizeof(T), 1);
    T* object = nullptr;
    // Nothing between the construction of the object and its metatable, which destroys it, may raise an
    // error.
    lua_getfield(L, LUA_REGISTRYINDEX, T::_ShortName());
    GuardLuaCall(L, [&] {
        object = new (room) T;
        return 0;
    });
    lua_setmetatable(L, -2);
    return GuardLuaCall(L, [&] {
        lua_pushvalue(L, -2);
        fields.ReadAllFrom(object, L);
        lua_settop(L, -2);
        object->Init(L);
        return 1;
    });
}

template <class T>
bool ScadaObj<T>::IsFunction(char const* name) {
    static luaL_Reg const Lib_f[] = {{"__clone", Clone}, {nullptr, nullptr}};
    for (luaL_Reg const* function = Lib_f; function->name; ++function) {
        if (std::strcmp(function->name, name) == 0) {
            return true;
        }
    }
    return false;
}

template <class T>
int ScadaObj<T>::Get(lua_State* L) {
    T* object = GetUserObject(L);
    return GuardLuaCall(L, [&] {
        if (object->check(L, -1)) {
            return 1;
        }
        if (lua_isstring(L, -1) && IsFunction(lua_tostring(L, -1))) {
            lua_pushcclosure(L, Clone, 0);
            return 1;
        }
        return fields.WriteTo(object, L);
    });
}

template <class T>
int ScadaObj<T>::Set(lua_State* L) {
    T* object = GetUserObject(L);
    luaL_checkany(L, 3);
    return GuardLuaCall(L, [&] { return object->check(L, -2) ? 1 : fields.ReadFrom(object, L); });
}

template <class T>
int ScadaObj<T>::Call(lua_State* L) {
    T* object = GetUserObject(L);
    return GuardLuaCall(L, [&] { return object->call(L); });
}

template <class T>
int ScadaObj<T>::Clone(lua_State* L) {
    T const* object = GetUserObject(L);
    return GuardLuaCall(L, [&] { return fields.WriteAllTo(object, L); });
}

template <class T>
int ScadaObj<T>::GC(lua_State* L) {
    T* object = GetUserObject(L);
    // A script can call this function too: without the metatable the object is destroyed only once.
    lua_pushnil(L);
    lua_setmetatable(L, 1);
    object->~T();
    return 1;
}

template <class T>
int ScadaObj<T>::Length(lua_State* L) {
    auto count = fields.size();
    if (ScadaFields const* parent = fields.parent()) {
        count += parent->size();
    }
    lua_pushinteger(L, static_cast<lua_Integer>(count));
    return 1;
}

template <class T>
int ScadaObj<T>::RegFBType(lua_State* L) {
    static bool const hasFields = (T::AddFields(fields), true);
    static_cast<void>(hasFields);
    static luaL_Reg const Lib_f[] = {
        {"new", New}, {"get", Get}, {"set", Set}, {"call", Call}, {nullptr, nullptr}};
    static luaL_Reg const Lib_m[] = {{"__index", Get}, {"__newindex", Set}, {"__call", Call},
                                     {"__gc", GC},     {"__len", Length},   {nullptr, nullptr}};
    luaL_newmetatable(L, T::_ShortName());
    luaL_setfuncs(L, Lib_m, 0);
    lua_settop(L, -2);
    lua_createtable(L, 0, 0);
    luaL_setfuncs(L, Lib_f, 0);
    lua_setglobal(L, T::_ShortName());

    if (RunMetaTable(L)) {
        return 1;
    }
    char const* message = lua_tostring(L, -1);
    logMsg("%s\n", message ? message : "");
    lua_settop(L, -2);
    return -1;
}

// Loads and runs the declaration. Neither call raises a Lua error; a failure leaves its message on the stack.
template <class T>
bool ScadaObj<T>::RunMetaTable(lua_State* L) {
    std::string const text = MetaTable();
    return luaL_loadbufferx(L, text.data(), text.size(), T::_ShortName(), nullptr) == LUA_OK &&
           lua_pcallk(L, 0, LUA_MULTRET, 0, 0, nullptr) == LUA_OK;
}

template <class T>
std::string ScadaObj<T>::MetaTable() {
    std::ostringstream text;
    text << std::boolalpha << T::_FullName() << "= FBMetadata({ Name = '" << T::_ShortName() << "', "
         << "Hash = 1001, Vars = { \n";
    int hash = 0;
    for (auto const& field : fields.fields()) {
        if (char const* type = field->lua_type()) {
            text << '\t' << field->name << " = { "
                 << "Hash = " << hash++ << ","
                 << "Type = " << type << ","
                 << "Retain = " << field->retain << " },\n";
        }
    }
    text << "}})\n";
    return text.str();
}

}  // namespace SCADA_API
