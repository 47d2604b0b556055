#pragma once

#include <lua.hpp>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "BACnet_protocol.h"
#include "Require.h"

namespace fuzz {

// The values that a script must read from the fields of one block.
class BlockModel {
public:
    enum Kind { Integer, LongInteger, Boolean, Text, List };

    struct Field {
        char const* name;
        Kind kind;
    };

    static constexpr std::array<Field, 16> Fields = {{{"FaultItemId", LongInteger},
                                                      {"ErrorTextItemId", LongInteger},
                                                      {"ExecuteItemId", LongInteger},
                                                      {"ConnectItemId", LongInteger},
                                                      {"WriteItemId", LongInteger},
                                                      {"WriteCondition", Integer},
                                                      {"ExecuteOnSlave", Boolean},
                                                      {"WriteOnSlave", Boolean},
                                                      {"Vars", List},
                                                      {"Address", Text},
                                                      {"MAC", Text},
                                                      {"Timeout", Integer},
                                                      {"CountRepeat", Integer},
                                                      {"AddressNumber", Integer},
                                                      {"NetworkNumber", Integer},
                                                      {"Priority", Integer}}};

    // -1 for a key that names no field.
    static int Find(std::string_view key) {
        for (std::size_t i = 0; i < Fields.size(); ++i) {
            if (key == Fields[i].name) {
                return static_cast<int>(i);
            }
        }
        return -1;
    }

    BlockModel() {
        Put("Address", "127.0.0.1:47808");
        Put("MAC", "255.255.255.255:47808");
        Put("Timeout", 1000);
        Put("CountRepeat", 3);
        Put("AddressNumber", 1);
    }

    // Sets the field to the value at the stack index. Leaves the stack and that value unchanged.
    void Set(int field, lua_State* L, int index) {
        int const top = lua_gettop(L);
        lua_pushvalue(L, index);
        Value& value = values.at(static_cast<std::size_t>(field));
        switch (Fields.at(static_cast<std::size_t>(field)).kind) {
            case Boolean:
                value.number = lua_type(L, -1) != LUA_TNIL && !IsFalse(L);
                break;
            case Text:
                value.text = TextOf(L);
                break;
            case List:
                value.number = static_cast<long long>(lua_rawlen(L, -1));
                break;
            case Integer:
                value.number = static_cast<int>(WholeNumberOf(L));
                break;
            case LongInteger:
                value.number = WholeNumberOf(L);
                break;
        }
        value.isKnown = true;
        lua_settop(L, top);
    }

    // After an assignment that ended in an error: the field has its previous value or the new one.
    void Forget(int field) { values.at(static_cast<std::size_t>(field)).isKnown = false; }

    // Requires that the value on top of the stack is what a script reads from the field.
    void RequireGot(int field, lua_State* L) const {
        Value const& value = values.at(static_cast<std::size_t>(field));
        switch (Fields.at(static_cast<std::size_t>(field)).kind) {
            case Boolean:
                Require(lua_isboolean(L, -1), "a boolean field gives a boolean");
                Require(!value.isKnown || lua_toboolean(L, -1) == value.number,
                        "a boolean field gives the value that was set");
                break;
            case Text:
                Require(lua_type(L, -1) == LUA_TSTRING, "a text field gives a text");
                Require(!value.isKnown || TextOf(L) == value.text,
                        "a text field gives the text that was set");
                break;
            case List:
                Require(lua_isnil(L, -1), "the list of variables cannot be read");
                break;
            default:
                Require(lua_isinteger(L, -1) != 0, "a number field gives an integer");
                Require(!value.isKnown || lua_tointeger(L, -1) == value.number,
                        "a number field gives the number that was set");
        }
    }

    // A script cannot read the list of variables; the block has it.
    void RequireVariables(dorvel::BACnet::BACnetProtocol const& block) const {
        Value const& value = values.at(static_cast<std::size_t>(Find("Vars")));
        Require(!value.isKnown || block.Vars.size() == static_cast<std::size_t>(value.number),
                "the block has the variables of the list");
    }

private:
    struct Value {
        bool isKnown = true;
        long long number = 0;
        std::string text;
    };

    void Put(char const* name, long long number) {
        values.at(static_cast<std::size_t>(Find(name))).number = number;
    }
    void Put(char const* name, char const* text) {
        values.at(static_cast<std::size_t>(Find(name))).text = text;
    }

    static bool IsFalse(lua_State* L) { return lua_isboolean(L, -1) && lua_toboolean(L, -1) == 0; }

    // The text of the value on top of the stack, which must be a copy: Lua may convert it to a text.
    static std::string TextOf(lua_State* L) {
        std::size_t length = 0;
        char const* const text = lua_tolstring(L, -1, &length);
        return text ? std::string(text, length) : std::string();
    }

    // By section 3.4.3 of the Lua manual: an integer, a float with an integral value, or a text of either;
    // anything else is 0. May push.
    static long long WholeNumberOf(lua_State* L) {
        if (lua_type(L, -1) == LUA_TSTRING) {
            std::string const text = TextOf(L);
            if (lua_stringtonumber(L, text.c_str()) != text.size() + 1) {
                return 0;
            }
        }
        lua_Integer number = 0;
        if (lua_isinteger(L, -1)) {
            return lua_tointeger(L, -1);
        }
        return lua_isnumber(L, -1) && lua_numbertointeger(lua_tonumber(L, -1), &number) &&
                       static_cast<lua_Number>(number) == lua_tonumber(L, -1)
                   ? number
                   : 0;
    }

    std::array<Value, Fields.size()> values;
};

}  // namespace fuzz
