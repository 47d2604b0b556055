#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <variant>
#include <vector>

struct lua_State;

namespace workbench {

struct LuaValue;

// The entries of a table in Lua's order, read without metamethods.
using LuaTable = std::vector<std::pair<LuaValue, LuaValue>>;

// A value of a script as plain data: checks need no Lua state, and no Lua error jumps out of their C++
// functions.
struct LuaValue {
    // A value that is not data: a function, a userdata, or a table below the requested depth.
    struct Other {
        char const* typeName;
    };

    std::variant<std::monostate, bool, long long, double, std::string, LuaTable, Other> value;

    template <typename T>
    T const* As() const {
        return std::get_if<T>(&value);
    }
};

// Copies the value at an absolute stack index, tables down to depth levels. Allocates nothing in the Lua
// state and leaves its stack unchanged. The size of the copy in octets is subtracted from room: Lua's own
// limit does not count it, since a text or a table takes memory in Lua once, however often it is copied.
// Throws ProjectError when room is used up, for more than a million values, and when no stack is left.
LuaValue CopyValue(lua_State* L, int index, int depth, std::size_t& room);

// The value for a message: texts in quotes, cut after 60 octets; tables by their type alone.
std::string Describe(LuaValue const& value);

}  // namespace workbench
