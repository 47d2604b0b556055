#include "LuaReader.h"

#include <algorithm>
#include <cstddef>
#include <lua.hpp>

#include "Mistake.h"

namespace simulator {

namespace {

constexpr int kDeepest = 16;
constexpr int kMostValues = 500'000;
constexpr std::size_t kMostText = 64 * 1024 * 1024;  // octets, of all texts
constexpr int kStackPerLevel = 8;

// Reads values by raw access, which runs no Lua code and raises no Lua error.
class LuaReader {
public:
    explicit LuaReader(lua_State* lua) : m_lua(lua) {}

    ScriptValue read(int depth) {
        if (depth > kDeepest || ++m_count > kMostValues || lua_checkstack(m_lua, kStackPerLevel) == 0) {
            throw Mistake("tables are nested too deeply");
        }
        ScriptValue value;
        switch (lua_type(m_lua, -1)) {
            case LUA_TNIL:
                break;
            case LUA_TBOOLEAN:
                value.type = ScriptValue::Type::Boolean;
                value.boolean = lua_toboolean(m_lua, -1) != 0;
                break;
            case LUA_TNUMBER:
                readNumber(value);
                break;
            case LUA_TSTRING:
                value.type = ScriptValue::Type::Text;
                value.text = text();
                break;
            case LUA_TTABLE:
                readTable(value, depth);
                break;
            case LUA_TUSERDATA:
                readMade(value, depth);
                break;
            default:
                throw Mistake(std::string("a ") + lua_typename(m_lua, lua_type(m_lua, -1)) + " is no value");
        }
        lua_pop(m_lua, 1);
        return value;
    }

private:
    std::string text() { return textAt(-1); }

    std::string textAt(int place) {
        std::size_t length = 0;
        char const* const first = lua_tolstring(m_lua, place, &length);
        // The same text may stand in many places: in Lua it takes memory once, here every time.
        if (length > kMostText - m_textOctets) {
            throw Mistake("the texts are too long");
        }
        m_textOctets += length;
        return std::string(first, length);
    }

    void readNumber(ScriptValue& value) {
        bool const isInteger = lua_isinteger(m_lua, -1) != 0;
        value.type = isInteger ? ScriptValue::Type::Integer : ScriptValue::Type::Number;
        value.integer = isInteger ? lua_tointeger(m_lua, -1) : 0;
        value.number = lua_tonumber(m_lua, -1);
    }

    void readTable(ScriptValue& value, int depth) {
        value.type = ScriptValue::Type::Table;
        auto const length = static_cast<lua_Integer>(lua_rawlen(m_lua, -1));
        for (lua_Integer i = 1; i <= length; ++i) {
            lua_rawgeti(m_lua, -1, i);
            value.list.push_back(read(depth + 1));
        }
        lua_pushnil(m_lua);
        while (lua_next(m_lua, -2) != 0) {
            readField(value, length, depth);
        }
        std::sort(value.fields.begin(), value.fields.end(),
                  [](ScriptField const& left, ScriptField const& right) { return left.name < right.name; });
    }

    // Key and value are on the stack; the key stays there for the next step.
    void readField(ScriptValue& value, lua_Integer length, int depth) {
        if (lua_type(m_lua, -2) == LUA_TSTRING) {
            ScriptField field{textAt(-2), read(depth + 1)};
            value.fields.push_back(std::move(field));
            return;
        }
        if (lua_isinteger(m_lua, -2) == 0 || lua_tointeger(m_lua, -2) < 1 ||
            lua_tointeger(m_lua, -2) > length) {
            throw Mistake("the keys of a table must be names or 1, 2, 3 ...");
        }
        lua_pop(m_lua, 1);
    }

    // What one of the file's functions has made: a kind and a table.
    void readMade(ScriptValue& value, int depth) {
        int const line = *static_cast<int*>(lua_touserdata(m_lua, -1));
        lua_getiuservalue(m_lua, -1, 1);
        std::string const kind = text();
        lua_pop(m_lua, 1);
        lua_getiuservalue(m_lua, -1, 2);
        try {
            value = read(depth + 1);
        } catch (Mistake const& mistake) {
            throw mistake.at(line);
        }
        value.kind = kind;
        value.line = line;
    }

    lua_State* m_lua;
    int m_count = 0;
    std::size_t m_textOctets = 0;
};

}  // namespace

// What an exception leaves on the stack is of no use to anybody.
ScriptValue readScriptValue(lua_State* lua) try { return LuaReader(lua).read(0); } catch (Mistake const&) {
    lua_settop(lua, 0);
    throw;
}

}  // namespace simulator
