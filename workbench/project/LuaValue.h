#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <variant>
#include <vector>

struct lua_State;

namespace workbench {

struct LuaValue;

// The entries of a table in Lua's own order, raw: no metamethod has been asked.
using LuaTable = std::vector<std::pair<LuaValue, LuaValue>>;

// A value of a script as plain data, so that checks need neither a Lua state nor its jumps out of C++
// functions.
struct LuaValue {
    // Something that is no data: a function, a userdata, a table below the depth that was asked for.
    struct Other {
        char const* typeName;
    };

    std::variant<std::monostate, bool, long long, double, std::string, LuaTable, Other> value;

    template <typename T>
    T const* As() const {
        return std::get_if<T>(&value);
    }
};

// Copies the value at an absolute stack place, tables down to depth levels. Allocates nothing in the Lua
// state, and leaves its stack as it was. What the copy takes, in octets, is taken from room: in Lua a text or
// a table takes memory once, however often it is handed over. Throws ProjectError when there is not enough of
// it, and when there are more than a million values or no stack is left.
LuaValue CopyValue(lua_State* L, int index, int depth, std::size_t& room);

// The value as a message shows it: texts in quotes, cut after 60 octets; tables by their type alone.
std::string Describe(LuaValue const& value);

}  // namespace workbench
