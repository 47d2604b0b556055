#include <lua.hpp>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "LuaCall.h"
#include "dorvel/ScadaProtocol.h"

// Everything here is called with objects alive, so it uses only such Lua functions as cannot fail.

namespace {

using Properties = std::map<std::string, OpcUa_VariantHlp>;

// The entries of one variable's table as they stand there.
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

std::string TextAt(lua_State* L, int index) {
    std::size_t length = 0;
    char const* const text = lua_tolstring(L, index, &length);
    return std::string(text, length);
}

long long IntegerOnTop(lua_State* L) {
    int isInteger = 0;
    lua_Integer const value = lua_tointegerx(L, -1, &isInteger);
    if (lua_type(L, -1) != LUA_TNUMBER || !isInteger || value < 0) {
        throw std::invalid_argument("a whole number from 0 expected");
    }
    return value;
}

std::string TextOnTop(lua_State* L) {
    if (lua_type(L, -1) != LUA_TSTRING) {
        throw std::invalid_argument("a text expected");
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
            std::string const text = TextAt(L, -1);
            value.SetUTF8String(text.data(), static_cast<int>(text.size()));
            break;
        }
        default:
            throw std::invalid_argument("a boolean, a number or a text expected");
    }
    return value;
}

void ReadEntry(lua_State* L, std::string const& name, Entries& entries) {
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
    entries.others[name] = PropertyOnTop(L);
}

// What a failure says is put behind the place at which it happened.
template <class Body>
void At(std::string const& place, Body const& body) {
    try {
        body();
    } catch (std::invalid_argument const& failure) {
        throw std::invalid_argument(place + ": " + failure.what());
    }
}

_OpcUa_BuiltInType ValueType(long long number) {
    bool const isStored = (number >= OpcUaType_Boolean && number <= OpcUaType_DateTime) ||
                          number == OpcUaType_ByteString || number == OpcUaType_StatusCode;
    if (!isStored) {
        throw std::invalid_argument("the number of a type expected, got " + std::to_string(number));
    }
    return static_cast<_OpcUa_BuiltInType>(number);
}

OpcUa_BuiltInTypeHlp TypeOf(Entries const& entries, std::string const& place) {
    OpcUa_BuiltInTypeHlp type(OpcUaType_DataValue);
    if (entries.type == OpcUaType_DataValue) {
        At(place + ".ElementType", [&] { type.ElementType = ValueType(entries.elementType); });
    } else {
        At(place + ".Type", [&] { type.Type = ValueType(entries.type); });
    }
    return type;
}

ScadaProtocol::Channel ChannelOf(Entries entries, std::string const& place) {
    ScadaProtocol::Channel channel;
    OpcUa_BuiltInTypeHlp const type = TypeOf(entries, place);
    channel.Read = {entries.readId, std::move(entries.readField), type};
    if (entries.writeId != 0) {
        channel.Write = ScadaProtocol::WriteChannel{entries.writeId, std::move(entries.writeField), type};
    }
    channel.Properties = std::move(entries.others);
    return channel;
}

void RequireTable(lua_State* L, std::string const& place) {
    if (!lua_istable(L, -1)) {
        throw std::invalid_argument(place + ": a table expected, got " + luaL_typename(L, -1));
    }
}

ScadaProtocol::Channel ChannelOnTop(lua_State* L, std::string const& place) {
    RequireTable(L, place);
    Entries entries;
    lua_pushnil(L);
    while (lua_next(L, -2)) {
        if (lua_type(L, -2) != LUA_TSTRING) {
            throw std::invalid_argument(place + ": names expected as keys");
        }
        std::string const name = TextAt(L, -2);
        At(place + "." + name, [&] { ReadEntry(L, name, entries); });
        lua_pop(L, 1);
    }
    return ChannelOf(std::move(entries), place);
}

// A list has no other keys than its places.
void RequireList(lua_State* L) {
    RequireTable(L, "Vars");
    lua_Unsigned count = 0;
    lua_pushnil(L);
    while (lua_next(L, -2)) {
        ++count;
        lua_pop(L, 1);
    }
    if (count != lua_rawlen(L, -1)) {
        throw std::invalid_argument("Vars: a list of tables expected");
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
        for (lua_Integer place = 1; place <= count; ++place) {
            lua_rawgeti(L, -1, place);
            result.push_back(ChannelOnTop(L, "Vars[" + std::to_string(place) + "]"));
            lua_pop(L, 1);
        }
        channels = std::move(result);
        return 0;
    });
}
