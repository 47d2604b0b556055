#include <lua.hpp>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "LuaCall.h"
#include "dorvel/ScadaProtocol.h"

// These functions hold C++ objects, so they call only Lua functions that cannot fail.

namespace {

using Properties = std::map<std::string, OpcUa_VariantHlp>;

// The entries of one variable's table.
struct Entries {
    long long readId = 0;
    long long writeId = 0;
    long long type = 0;
    long long elementType = 0;
    std::string readField;
    std::string writeField;
    Properties others;
};

struct IntegerEntry {
    std::string_view name;
    long long Entries::*member;
};

struct TextEntry {
    std::string_view name;
    std::string Entries::*member;
};

constexpr IntegerEntry IntegerEntries[] = {{"ReadId", &Entries::readId},
                                           {"WriteId", &Entries::writeId},
                                           {"Type", &Entries::type},
                                           {"ElementType", &Entries::elementType}};
constexpr TextEntry TextEntries[] = {{"ReadField", &Entries::readField},
                                     {"WriteField", &Entries::writeField}};

// The text is valid while the string is on the stack or in a table.
std::string_view TextAt(lua_State* L, int index) {
    std::size_t length = 0;
    char const* const text = lua_tolstring(L, index, &length);
    return {text, length};
}

long long IntegerOnTop(lua_State* L) {
    int isInteger = 0;
    lua_Integer const value = lua_tointegerx(L, -1, &isInteger);
    if (lua_type(L, -1) != LUA_TNUMBER || !isInteger || value < 0) {
        throw std::invalid_argument("expected a whole number of 0 or more");
    }
    return value;
}

std::string_view TextOnTop(lua_State* L) {
    if (lua_type(L, -1) != LUA_TSTRING) {
        throw std::invalid_argument("expected a text");
    }
    return TextAt(L, -1);
}

OpcUa_VariantHlp PropertyOnTop(lua_State* L) {
    OpcUa_VariantHlp value;
    switch (lua_type(L, -1)) {
        case LUA_TBOOLEAN:
            value.SetBool(lua_toboolean(L, -1) != 0);
            break;
        case LUA_TNUMBER:
            if (lua_isinteger(L, -1)) {
                value.SetInt64(lua_tointeger(L, -1));
            } else {
                value.SetDouble(lua_tonumber(L, -1));
            }
            break;
        case LUA_TSTRING: {
            std::string_view const text = TextAt(L, -1);
            value.SetUTF8String(text.data(), static_cast<int>(text.size()));
            break;
        }
        default:
            throw std::invalid_argument("expected a boolean, a number or a text");
    }
    return value;
}

void ReadEntry(lua_State* L, std::string_view name, Entries& entries) {
    for (IntegerEntry const& entry : IntegerEntries) {
        if (entry.name == name) {
            entries.*entry.member = IntegerOnTop(L);
            return;
        }
    }
    for (TextEntry const& entry : TextEntries) {
        if (entry.name == name) {
            entries.*entry.member = TextOnTop(L);
            return;
        }
    }
    entries.others.emplace(name, PropertyOnTop(L));
}

std::string PathOf(lua_Integer variable) {
    return "Vars[" + std::to_string(variable) + "]";
}

// Runs the body; puts the path of the variable's entry in front of the text of a failure.
template <class Body>
void At(lua_Integer variable, std::string_view entry, Body const& body) {
    try {
        body();
    } catch (std::invalid_argument const& failure) {
        throw std::invalid_argument(PathOf(variable) + "." + std::string(entry) + ": " + failure.what());
    }
}

_OpcUa_BuiltInType ValueType(long long number) {
    bool const isStored = (number >= OpcUaType_Boolean && number <= OpcUaType_DateTime) ||
                          number == OpcUaType_ByteString || number == OpcUaType_StatusCode;
    if (!isStored) {
        throw std::invalid_argument(std::to_string(number) +
                                    " is not the number of a type that variables can have");
    }
    return static_cast<_OpcUa_BuiltInType>(number);
}

OpcUa_BuiltInTypeHlp TypeOf(Entries const& entries, lua_Integer variable) {
    OpcUa_BuiltInTypeHlp type(OpcUaType_DataValue);
    if (entries.type == OpcUaType_DataValue) {
        At(variable, "ElementType", [&] { type.ElementType = ValueType(entries.elementType); });
    } else {
        At(variable, "Type", [&] { type.Type = ValueType(entries.type); });
    }
    return type;
}

ScadaProtocol::Channel ChannelOf(Entries entries, lua_Integer variable) {
    ScadaProtocol::Channel channel;
    OpcUa_BuiltInTypeHlp const type = TypeOf(entries, variable);
    channel.Read = {entries.readId, std::move(entries.readField), type};
    if (entries.writeId != 0) {
        channel.Write = ScadaProtocol::WriteChannel{entries.writeId, std::move(entries.writeField), type};
    }
    channel.Properties = std::move(entries.others);
    return channel;
}

std::invalid_argument NotATable(lua_State* L, std::string const& path) {
    return std::invalid_argument(path + ": expected a table, got a " + luaL_typename(L, -1));
}

ScadaProtocol::Channel ChannelOnTop(lua_State* L, lua_Integer variable) {
    if (!lua_istable(L, -1)) {
        throw NotATable(L, PathOf(variable));
    }
    Entries entries;
    lua_pushnil(L);
    while (lua_next(L, -2)) {
        if (lua_type(L, -2) != LUA_TSTRING) {
            throw std::invalid_argument(PathOf(variable) + ": every key must be a name");
        }
        std::string_view const name = TextAt(L, -2);
        At(variable, name, [&] { ReadEntry(L, name, entries); });
        lua_pop(L, 1);
    }
    return ChannelOf(std::move(entries), variable);
}

// A list has no keys other than its indices.
void RequireList(lua_State* L) {
    if (!lua_istable(L, -1)) {
        throw NotATable(L, "Vars");
    }
    lua_Unsigned count = 0;
    lua_pushnil(L);
    while (lua_next(L, -2)) {
        ++count;
        lua_pop(L, 1);
    }
    if (count != lua_rawlen(L, -1)) {
        throw std::invalid_argument("Vars: expected a list of tables without other keys");
    }
}

}  // namespace

void get_lua_value(ScadaProtocol::Channels& channels, lua_State* L) {
    luaL_checkstack(L, 4, "Vars");
    dorvel::GuardLua(L, [&] {
        RequireList(L);
        ScadaProtocol::Channels result;
        auto const count = static_cast<lua_Integer>(lua_rawlen(L, -1));
        result.reserve(static_cast<std::size_t>(count));
        for (lua_Integer index = 1; index <= count; ++index) {
            lua_rawgeti(L, -1, index);
            result.push_back(ChannelOnTop(L, index));
            lua_pop(L, 1);
        }
        channels = std::move(result);
        return 0;
    });
}
