#include "ScriptReader.h"

#include <gtest/gtest.h>

#include <lua.hpp>

#include "LuaState.h"

using namespace tools;

namespace {

int Open(lua_State* L) {
    luaL_requiref(L, LUA_GNAME, luaopen_base, 1);
    luaL_requiref(L, LUA_STRLIBNAME, luaopen_string, 1);
    luaL_requiref(L, LUA_COLIBNAME, luaopen_coroutine, 1);
    for (char const* const name : {"ramp", "analog_input"}) {
        lua_pushstring(L, name);
        lua_pushcclosure(L, MakeValue, 1);
        lua_setglobal(L, name);
    }
    return 0;
}

class ScriptReader : public testing::Test {
protected:
    ScriptValue Read(std::string const& expression, int depth = 8) {
        EXPECT_EQ(state.Run("return " + expression, "=s", 1), "");
        ScriptValue value = ReadValue(state.Get(), 1, depth, room);
        EXPECT_EQ(lua_gettop(state.Get()), 1);
        lua_settop(state.Get(), 0);
        return value;
    }

    // The reason why the value of a chunk is unreadable, after the line of the constructor's call.
    std::string Mistake(std::string const& chunk, int depth = 16) {
        EXPECT_EQ(state.Run(chunk, "=s", 1), "");
        std::string mistake = "readable";
        try {
            ReadValue(state.Get(), 1, depth, room);
        } catch (UnreadableValue const& reason) {
            mistake = std::to_string(reason.Line()) + ": " + reason.what();
        }
        EXPECT_EQ(lua_gettop(state.Get()), 1);
        lua_settop(state.Get(), 0);
        return mistake;
    }

    LuaState state{LuaLimits(), "the script", Open};
    std::size_t room = std::size_t{64} << 20;
};

TEST_F(ScriptReader, ReadsWhatHasNoParts) {
    EXPECT_TRUE(Read("nil").IsNil());
    EXPECT_TRUE(Read("true").boolean);
    ScriptValue const integer = Read("-7");
    EXPECT_EQ(integer.type, ScriptValue::Type::Integer);
    EXPECT_EQ(integer.integer, -7);
    EXPECT_EQ(integer.number, -7.0);
    ScriptValue const number = Read("7.0");
    EXPECT_EQ(number.type, ScriptValue::Type::Number);
    EXPECT_EQ(number.number, 7.0);
    EXPECT_EQ(Read("'a\\0b'").text, std::string("a\0b", 3));
}

TEST_F(ScriptReader, ReadsElementsInOrderAndFieldsByName) {
    ScriptValue const table = Read("{'a', b = 1, 'c', a = {2}}");
    EXPECT_TRUE(table.IsPlainTable());
    ASSERT_EQ(table.list.size(), 2u);
    EXPECT_EQ(table.list[1].text, "c");
    ASSERT_EQ(table.fields.size(), 2u);
    EXPECT_EQ(table.fields[0].name, "a");
    EXPECT_EQ(table["a"].list.at(0).integer, 2);
    EXPECT_TRUE(table["c"].IsNil());
}

TEST_F(ScriptReader, AGapInAListIsANil) {
    ScriptValue const table = Read("{1, nil, 3}");
    ASSERT_EQ(table.list.size(), 3u);
    EXPECT_TRUE(table.list[1].IsNil());
}

TEST_F(ScriptReader, AConstructorGivesItsNameAndLine) {
    ScriptValue const made = Read("\nramp{1, to = 2}");
    EXPECT_TRUE(made.IsMade("ramp"));
    EXPECT_FALSE(made.IsPlainTable());
    EXPECT_EQ(made.line, 2);
    EXPECT_EQ(made.list.size(), 1u);
    EXPECT_EQ(made["to"].integer, 2);
}

TEST_F(ScriptReader, AConstructorPutsOtherArgumentsIntoATable) {
    EXPECT_EQ(Read("ramp(1, {2})").list.size(), 2u);
    EXPECT_EQ(Read("ramp(5)").list.size(), 1u);
    EXPECT_TRUE(Read("ramp()").IsMade("ramp"));
}

TEST_F(ScriptReader, WhatIsNotDataHasTheNameOfItsType) {
    EXPECT_EQ(Read("tostring").Describe(), "a function");
    EXPECT_EQ(Read("coroutine.create(tostring)").Describe(), "a thread");
    EXPECT_EQ(Read("{{}}", 1).list.at(0).type, ScriptValue::Type::Other);
    EXPECT_EQ(Read("{ramp{}}", 1).list.at(0).Describe(), "a userdata");
}

TEST_F(ScriptReader, AForeignUserdataIsNotData) {
    for (int userValues = 0; userValues < 5; ++userValues) {
        lua_newuserdatauv(state.Get(), 8, userValues);
        EXPECT_EQ(ReadValue(state.Get(), 1, 8, room).Describe(), "a userdata");
        EXPECT_EQ(lua_gettop(state.Get()), 1);
        lua_settop(state.Get(), 0);
    }
}

TEST_F(ScriptReader, AsksNoMetamethods) {
    std::string const guarded = "setmetatable({1}, {__index = error, __len = error, __pairs = error})";
    EXPECT_EQ(Read(guarded).list.size(), 1u);
}

TEST_F(ScriptReader, KeysAreNamesOrElements) {
    EXPECT_EQ(Mistake("return {[true] = 1}"),
              "0: the keys of a table must be names or 1, 2, 3 ..., not true");
    EXPECT_EQ(Mistake("return ramp{[1.5] = 1}"),
              "1: the keys of a table must be names or 1, 2, 3 ..., not 1.5");
    EXPECT_EQ(Mistake("return {[0] = 1}"), "0: the keys of a table must be names or 1, 2, 3 ..., not 0");
    EXPECT_EQ(Mistake("return {[{}] = 1}"),
              "0: the keys of a table must be names or 1, 2, 3 ..., not a table");
}

TEST_F(ScriptReader, InNumberedFieldsAnyWholeNumberIsAName) {
    ASSERT_EQ(state.Run("return ramp{[1] = 7, by = {[1] = 'a', [512] = {'b'}, [-3] = 'c', d = 1}}", "=s", 1),
              "");
    ScriptValue const value = ReadValue(state.Get(), 1, 8, room, {"by"});
    EXPECT_EQ(value.list.size(), 1u);
    ScriptValue const& by = value["by"];
    EXPECT_TRUE(by.list.empty());
    EXPECT_EQ(by.fields.size(), 4u);
    EXPECT_EQ(by["1"].text, "a");
    EXPECT_EQ(by["512"].list.at(0).text, "b");
    EXPECT_EQ(by["-3"].text, "c");
    EXPECT_EQ(by["d"].integer, 1);
}

TEST_F(ScriptReader, NumbersAreNamesOnlyInTheTableOfTheFieldItself) {
    ASSERT_EQ(state.Run("return {by = {x = {[5] = 1}}}", "=s", 1), "");
    EXPECT_THROW(ReadValue(state.Get(), 1, 8, room, {"by"}), UnreadableValue);
}

TEST_F(ScriptReader, ALongTextInManyPlacesIsTooMuch) {
    std::string const text = "local s = ('x'):rep(1 << 20) ";
    EXPECT_EQ(Mistake(text + "local t = {} for i = 1, 100 do t[i] = s end return t"),
              "0: the script passes too much data");
    room = std::size_t{64} << 20;
    EXPECT_EQ(Mistake(text + "local t = {} for i = 1, 100 do t[i] = {[s] = 1} end\nreturn ramp(t)"),
              "2: the script passes too much data");
}

TEST_F(ScriptReader, WhatIsReadIsTakenFromTheRoom) {
    room = 3 * sizeof(ScriptValue) + 5;
    Read("{'abcd', 5}");
    EXPECT_EQ(room, 1u);
    EXPECT_EQ(Mistake("return 1"), "0: the script passes too much data");
}

TEST_F(ScriptReader, TablesThatHoldThemselvesEnd) {
    ScriptValue value = Read("(function() local t = {} t[1] = t return t end)()", 3);
    EXPECT_EQ(value.list.at(0).list.at(0).list.at(0).type, ScriptValue::Type::Other);
    room = std::size_t{1} << 30;
    EXPECT_EQ(Mistake("local t = {} for i = 1, 3 do t[i] = t end\nreturn ramp(t)"),
              "2: the script passes too many values");
    EXPECT_NE(Mistake("local t = {} for i = 0, 40 do t[1 << i] = 1 end return t"), "readable");
}

TEST_F(ScriptReader, TheInnermostLineIsReported) {
    EXPECT_EQ(Mistake("return ramp{\nanalog_input{[true] = 1}}").substr(0, 3), "2: ");
}

TEST(ScriptValue, IsDescribedForAMessage) {
    EXPECT_EQ(ScriptValue().Describe(), "nil");
    EXPECT_EQ(ScriptValue::OfBoolean(false).Describe(), "false");
    EXPECT_EQ(ScriptValue::OfInteger(-5).Describe(), "-5");
    EXPECT_EQ(ScriptValue::OfNumber(0.1).Describe(), "0.1");
    EXPECT_EQ(ScriptValue::OfText("a\nb").Describe(), "\"a\\nb\"");
    ScriptValue table;
    table.type = ScriptValue::Type::Table;
    EXPECT_EQ(table.Describe(), "a table");
    table.kind = "ramp";
    EXPECT_EQ(table.Describe(), "a ramp");
    table.kind = "analog_input";
    EXPECT_EQ(table.Describe(), "an analog_input");
}

}  // namespace
