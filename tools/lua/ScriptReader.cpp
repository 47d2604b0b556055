#include "ScriptReader.h"

#include <algorithm>
#include <lua.hpp>
#include <utility>

#include "LuaState.h"

namespace tools {

namespace {

constexpr int MostValues = 500'000;
constexpr int StackPerLevel = 4;

// The address marks the userdata of MakeValue.
char const MarkOfMade = 0;

enum MadePart { MadeMark = 1, MadeKind, MadeLine, MadeTable, MadeParts = MadeTable };

class Reader {
public:
    Reader(lua_State* state, std::size_t& roomLeft, std::vector<std::string_view> const& numberedFields)
        : L(state), room(roomLeft), numbered(numberedFields) {}

    ScriptValue Read(int index, int depth) {
        if (++count > MostValues) {
            throw UnreadableValue("the script passes too many values");
        }
        Take(sizeof(ScriptValue));
        switch (lua_type(L, index)) {
            case LUA_TNIL:
                return {};
            case LUA_TBOOLEAN:
                return ScriptValue::OfBoolean(lua_toboolean(L, index) != 0);
            case LUA_TNUMBER:
                return lua_isinteger(L, index) != 0 ? ScriptValue::OfInteger(lua_tointeger(L, index))
                                                    : ScriptValue::OfNumber(lua_tonumber(L, index));
            case LUA_TSTRING:
                return ScriptValue::OfText(Text(index));
            default:
                break;
        }
        ScriptValue value;
        if (depth <= 0 || !ReadInner(index, depth, value)) {
            value.type = ScriptValue::Type::Other;
            value.text = luaL_typename(L, index);
        }
        return value;
    }

private:
    void Take(std::size_t octets) {
        if (octets > room) {
            throw UnreadableValue("the script passes too much data");
        }
        room -= octets;
    }

    std::string Text(int index) {
        std::size_t length = 0;
        char const* const text = lua_tolstring(L, index, &length);
        Take(length);
        return std::string(text, length);
    }

    // Returns false for what is not data.
    bool ReadInner(int index, int depth, ScriptValue& value) {
        if (lua_checkstack(L, StackPerLevel) == 0) {
            throw UnreadableValue("the tables are nested too deeply");
        }
        if (lua_istable(L, index)) {
            ReadTable(index, depth - 1, value);
            return true;
        }
        if (!IsMade(index)) {
            return false;
        }
        ReadMade(index, depth, value);
        return true;
    }

    void ReadTable(int index, int depth, ScriptValue& value) {
        value.type = ScriptValue::Type::Table;
        int const top = lua_gettop(L);
        bool const isNumbered = std::exchange(nextIsNumbered, false);
        lua_Integer const length = isNumbered ? 0 : static_cast<lua_Integer>(lua_rawlen(L, index));
        for (lua_Integer i = 1; i <= length; ++i) {
            lua_rawgeti(L, index, i);
            value.list.push_back(Read(top + 1, depth));
            lua_settop(L, top);
        }
        lua_pushnil(L);
        while (lua_next(L, index) != 0) {
            if (isNumbered && lua_isinteger(L, top + 1) != 0) {
                value.fields.push_back({std::to_string(lua_tointeger(L, top + 1)), Read(top + 2, depth)});
            } else {
                ReadField(top + 1, length, depth, value);
            }
            lua_settop(L, top + 1);
        }
        std::sort(value.fields.begin(), value.fields.end(),
                  [](ScriptField const& left, ScriptField const& right) { return left.name < right.name; });
    }

    // The value is above its key.
    void ReadField(int key, lua_Integer length, int depth, ScriptValue& value) {
        if (lua_type(L, key) == LUA_TSTRING) {
            std::string name = Text(key);
            nextIsNumbered = lua_istable(L, key + 1) &&
                             std::find(numbered.begin(), numbered.end(), name) != numbered.end();
            value.fields.push_back({std::move(name), Read(key + 1, depth)});
            nextIsNumbered = false;
            return;
        }
        bool const isElement =
            lua_isinteger(L, key) != 0 && lua_tointeger(L, key) >= 1 && lua_tointeger(L, key) <= length;
        if (!isElement) {
            throw UnreadableValue("the keys of a table must be names or 1, 2, 3 ..., not " +
                                  Read(key, 0).Describe());
        }
    }

    bool IsMade(int index) {
        if (lua_type(L, index) != LUA_TUSERDATA) {
            return false;
        }
        lua_getiuservalue(L, index, MadeMark);
        bool const isMade = lua_touserdata(L, -1) == &MarkOfMade;
        lua_pop(L, 1);
        return isMade;
    }

    void ReadMade(int index, int depth, ScriptValue& value) {
        int const top = lua_gettop(L);
        lua_getiuservalue(L, index, MadeKind);
        lua_getiuservalue(L, index, MadeLine);
        lua_getiuservalue(L, index, MadeTable);
        auto const line = static_cast<int>(lua_tointeger(L, top + 2));
        try {
            value = Read(top + 3, depth);
            value.kind = Text(top + 1);
        } catch (UnreadableValue const& reason) {
            throw reason.Line() != 0 ? reason : UnreadableValue(reason.what(), line);
        }
        value.line = line;
        lua_settop(L, top);
    }

    lua_State* L;
    std::size_t& room;
    std::vector<std::string_view> const& numbered;
    bool nextIsNumbered = false;
    int count = 0;
};

}  // namespace

ScriptValue ReadValue(lua_State* L, int index, int depth, std::size_t& room,
                      std::vector<std::string_view> const& numbered) {
    int const top = lua_gettop(L);
    try {
        ScriptValue value = Reader(L, room, numbered).Read(index, depth);
        lua_settop(L, top);
        return value;
    } catch (...) {
        lua_settop(L, top);
        throw;
    }
}

int MakeValue(lua_State* L) {
    if (lua_gettop(L) != 1 || !lua_istable(L, 1)) {
        int const count = lua_gettop(L);
        lua_createtable(L, count, 0);
        lua_insert(L, 1);
        for (int i = count; i >= 1; --i) {
            lua_rawseti(L, 1, i);
        }
    }
    lua_newuserdatauv(L, 0, MadeParts);
    lua_pushlightuserdata(L, const_cast<char*>(&MarkOfMade));
    lua_setiuservalue(L, 2, MadeMark);
    lua_pushvalue(L, lua_upvalueindex(1));
    lua_setiuservalue(L, 2, MadeKind);
    lua_Debug caller;
    lua_pushinteger(L, FindScript(L, caller) ? caller.currentline : 0);
    lua_setiuservalue(L, 2, MadeLine);
    lua_pushvalue(L, 1);
    lua_setiuservalue(L, 2, MadeTable);
    return 1;
}

}  // namespace tools
