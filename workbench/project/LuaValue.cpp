#include "LuaValue.h"

#include <cstddef>
#include <lua.hpp>

#include "NumberText.h"
#include "Printable.h"
#include "ProjectError.h"

namespace workbench {

namespace {

constexpr int MostValues = 1000000;

class Copier {
public:
    Copier(lua_State* state, std::size_t& roomLeft) : L(state), room(roomLeft) {}

    LuaValue Copy(int index, int depth) {
        if (++count > MostValues) {
            throw ProjectError("the table has more than " + std::to_string(MostValues) + " keys and values");
        }
        Take(sizeof(LuaValue));
        switch (lua_type(L, index)) {
            case LUA_TNIL:
                return {};
            case LUA_TBOOLEAN:
                return {lua_toboolean(L, index) != 0};
            case LUA_TNUMBER:
                return Number(index);
            case LUA_TSTRING:
                return Text(index);
            case LUA_TTABLE:
                if (depth > 0) {
                    return {Table(index, depth - 1)};
                }
                break;
            default:
                break;
        }
        return {LuaValue::Other{lua_typename(L, lua_type(L, index))}};
    }

private:
    void Take(std::size_t octets) {
        if (octets > room) {
            throw ProjectError("the project passes more data than its memory limit allows");
        }
        room -= octets;
    }

    LuaValue Number(int index) const {
        if (lua_isinteger(L, index)) {
            return {static_cast<long long>(lua_tointeger(L, index))};
        }
        return {lua_tonumber(L, index)};
    }

    LuaValue Text(int index) {
        std::size_t length = 0;
        char const* const text = lua_tolstring(L, index, &length);
        Take(length);
        return {std::string(text, length)};
    }

    LuaTable Table(int index, int depth) {
        if (!lua_checkstack(L, 3)) {
            throw ProjectError("the nesting of the table is too deep");
        }
        int const top = lua_gettop(L);
        LuaTable table;
        lua_pushnil(L);
        while (lua_next(L, index)) {
            LuaValue key = Copy(top + 1, 0);
            table.emplace_back(std::move(key), Copy(top + 2, depth));
            lua_settop(L, top + 1);
        }
        return table;
    }

    lua_State* L;
    std::size_t& room;
    int count = 0;
};

struct Description {
    std::string operator()(std::monostate) const { return "nil"; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(long long value) const { return std::to_string(value); }
    std::string operator()(double value) const { return tools::NumberText(value); }
    std::string operator()(std::string const& value) const { return tools::Quoted(value); }
    std::string operator()(LuaTable const&) const { return "a table"; }
    std::string operator()(LuaValue::Other const& value) const { return std::string("a ") + value.typeName; }
};

}  // namespace

LuaValue CopyValue(lua_State* L, int index, int depth, std::size_t& room) {
    int const top = lua_gettop(L);
    try {
        return Copier(L, room).Copy(index, depth);
    } catch (...) {
        lua_settop(L, top);
        throw;
    }
}

std::string Describe(LuaValue const& value) {
    return std::visit(Description(), value.value);
}

}  // namespace workbench
