#include "LuaReader.h"

#include <algorithm>
#include <cstddef>
#include <lua.hpp>

#include "Mistake.h"

namespace simulator {

namespace {

constexpr int Deepest = 16;
constexpr int MostValues = 500'000;
constexpr std::size_t MostText = 64 * 1024 * 1024;  // octets, of all texts
constexpr int StackPerLevel = 8;

// Reads values by raw access, which runs no Lua code and raises no Lua error.
class LuaReader {
public:
    explicit LuaReader(lua_State* luaState) : lua(luaState) {}

    ScriptValue Read(int depth) {
        if (depth > Deepest || ++count > MostValues || lua_checkstack(lua, StackPerLevel) == 0) {
            throw Mistake("tables are nested too deeply");
        }
        ScriptValue value;
        switch (lua_type(lua, -1)) {
            case LUA_TNIL:
                break;
            case LUA_TBOOLEAN:
                value.type = ScriptValue::Type::Boolean;
                value.boolean = lua_toboolean(lua, -1) != 0;
                break;
            case LUA_TNUMBER:
                ReadNumber(value);
                break;
            case LUA_TSTRING:
                value.type = ScriptValue::Type::Text;
                value.text = Text();
                break;
            case LUA_TTABLE:
                ReadTable(value, depth);
                break;
            case LUA_TUSERDATA:
                ReadMade(value, depth);
                break;
            default:
                throw Mistake(std::string("a ") + lua_typename(lua, lua_type(lua, -1)) + " is not a value");
        }
        lua_pop(lua, 1);
        return value;
    }

private:
    std::string Text() { return TextAt(-1); }

    std::string TextAt(int place) {
        std::size_t length = 0;
        char const* const first = lua_tolstring(lua, place, &length);
        // The same text may stand in many places: in Lua it takes memory once, here every time.
        if (length > MostText - textOctets) {
            throw Mistake("the texts are too long");
        }
        textOctets += length;
        return std::string(first, length);
    }

    void ReadNumber(ScriptValue& value) {
        bool const isInteger = lua_isinteger(lua, -1) != 0;
        value.type = isInteger ? ScriptValue::Type::Integer : ScriptValue::Type::Number;
        value.integer = isInteger ? lua_tointeger(lua, -1) : 0;
        value.number = lua_tonumber(lua, -1);
    }

    void ReadTable(ScriptValue& value, int depth) {
        value.type = ScriptValue::Type::Table;
        auto const length = static_cast<lua_Integer>(lua_rawlen(lua, -1));
        for (lua_Integer i = 1; i <= length; ++i) {
            lua_rawgeti(lua, -1, i);
            value.list.push_back(Read(depth + 1));
        }
        lua_pushnil(lua);
        while (lua_next(lua, -2) != 0) {
            ReadField(value, length, depth);
        }
        std::sort(value.fields.begin(), value.fields.end(),
                  [](ScriptField const& left, ScriptField const& right) { return left.name < right.name; });
    }

    // Key and value are on the stack; the key stays there for the next step.
    void ReadField(ScriptValue& value, lua_Integer length, int depth) {
        if (lua_type(lua, -2) == LUA_TSTRING) {
            ScriptField field{TextAt(-2), Read(depth + 1)};
            value.fields.push_back(std::move(field));
            return;
        }
        if (lua_isinteger(lua, -2) == 0 || lua_tointeger(lua, -2) < 1 || lua_tointeger(lua, -2) > length) {
            throw Mistake("the keys of a table must be names or 1, 2, 3 ...");
        }
        lua_pop(lua, 1);
    }

    // What one of the file's functions has made: a kind and a table.
    void ReadMade(ScriptValue& value, int depth) {
        int const line = *static_cast<int*>(lua_touserdata(lua, -1));
        lua_getiuservalue(lua, -1, 1);
        std::string const kind = Text();
        lua_pop(lua, 1);
        lua_getiuservalue(lua, -1, 2);
        try {
            value = Read(depth + 1);
        } catch (Mistake const& mistake) {
            throw mistake.At(line);
        }
        value.kind = kind;
        value.line = line;
    }

    lua_State* lua;
    int count = 0;
    std::size_t textOctets = 0;
};

}  // namespace

// Nobody needs what an exception leaves on the stack.
ScriptValue ReadScriptValue(lua_State* lua) try { return LuaReader(lua).Read(0); } catch (Mistake const&) {
    lua_settop(lua, 0);
    throw;
}

}  // namespace simulator
