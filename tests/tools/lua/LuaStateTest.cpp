#include "LuaState.h"

#include <gtest/gtest.h>

#include <lua.hpp>
#include <new>

using namespace tools;

namespace {

int OpenBase(lua_State* L) {
    luaL_requiref(L, LUA_GNAME, luaopen_base, 1);
    luaL_requiref(L, LUA_COLIBNAME, luaopen_coroutine, 1);
    luaL_requiref(L, LUA_STRLIBNAME, luaopen_string, 1);
    return 0;
}

LuaLimits Limits() {
    LuaLimits limits;
    limits.time = std::chrono::milliseconds(50);
    limits.memory = std::size_t{1} << 20;
    return limits;
}

class LuaStateTest : public testing::Test {
protected:
    std::string Run(std::string const& text) {
        std::string error = state.Run(text, "=s");
        EXPECT_EQ(lua_gettop(state.Get()), 0);
        return error;
    }

    std::string RunInTime(std::string const& text) {
        state.StartClock();
        std::string error = Run(text);
        state.StopClock();
        return error;
    }

    LuaState state{Limits(), "the script", OpenBase};
};

TEST_F(LuaStateTest, LeavesTheResultsOnTheStack) {
    EXPECT_EQ(state.Run("return 1, 2, 3", "=s", 2), "");
    EXPECT_EQ(lua_gettop(state.Get()), 2);
    EXPECT_EQ(lua_tointeger(state.Get(), 1), 1);
}

TEST_F(LuaStateTest, ReportsErrorsAsLuaWordsThem) {
    EXPECT_EQ(Run("\nerror('a')"), "s:2: a");
    EXPECT_EQ(Run("error('a\\0b', 0)"), std::string("a\0b", 3));
    EXPECT_EQ(Run("x ="), "s:1: unexpected symbol near <eof>");
}

TEST_F(LuaStateTest, ReportsErrorsThatAreNotTexts) {
    EXPECT_EQ(Run("error({})"), "the script raised an error that is not a text but a table");
    EXPECT_EQ(Run("error(5)"), "the script raised an error that is not a text but a number");
    EXPECT_EQ(Run("error()"), "the script raised an error that is not a text but a nil");
}

TEST_F(LuaStateTest, RunsNoPrecompiledChunk) {
    EXPECT_EQ(Run("\x1BLua"), "attempt to load a binary chunk (mode is 't')");
}

TEST_F(LuaStateTest, CallsAFunctionOfTheRegistryOnce) {
    ASSERT_EQ(state.Run("return function() count = (count or 0) + 1 if count > 1 then error('again') end end",
                        "=s", 1),
              "");
    lua_pushvalue(state.Get(), -1);
    int const first = luaL_ref(state.Get(), LUA_REGISTRYINDEX);
    int const second = luaL_ref(state.Get(), LUA_REGISTRYINDEX);
    EXPECT_EQ(state.Call(first), "");
    EXPECT_EQ(state.Call(second), "s:1: again");
    EXPECT_EQ(lua_rawgeti(state.Get(), LUA_REGISTRYINDEX, second) == LUA_TFUNCTION, false);
}

TEST_F(LuaStateTest, ALoopWithoutEndExceedsTheTime) {
    std::string const message = "the script has run for 50 ms, the limit, and has not ended";
    EXPECT_EQ(RunInTime("\nwhile true do end"), "s:2: " + message);
    EXPECT_EQ(RunInTime("while true do pcall(function() while true do end end) end"), "s:1: " + message);
    EXPECT_EQ(RunInTime("while true do coroutine.wrap(function() end)() end"), "s:1: " + message);
}

TEST_F(LuaStateTest, EveryStartOfTheClockGivesTheWholeTime) {
    LuaLimits limits = Limits();
    limits.time = std::chrono::seconds(1);
    LuaState unhurried(limits, "the script", OpenBase);
    for (char const* const text : {"while true do end", "for i = 1, 1000 do end"}) {
        unhurried.StartClock();
        bool const isEndless = text[0] == 'w';
        EXPECT_EQ(unhurried.Run(text, "=s").empty(), !isEndless) << text;
        unhurried.StopClock();
    }
}

TEST_F(LuaStateTest, WithoutAClockThereIsNoLimitOfTime) {
    LuaLimits limits = Limits();
    limits.time = std::chrono::milliseconds(0);
    LuaState unlimited(limits, "the script", OpenBase);
    EXPECT_EQ(unlimited.Run("for i = 1, 100000 do end", "=s"), "");
}

TEST_F(LuaStateTest, InstructionsAreLimitedIfThatIsAskedFor) {
    LuaLimits limits = Limits();
    limits.time = std::chrono::minutes(10);
    limits.instructions = 5000;
    LuaState counting(limits, "the file", OpenBase);
    std::string const message = "the file has run for 5000 instructions, the limit, and has not ended";
    counting.StartClock();
    EXPECT_EQ(counting.Run("for i = 1, 1000 do end", "=s"), "");
    EXPECT_EQ(counting.Run("while true do pcall(function() while true do end end) end", "=s"),
              "s:1: " + message);
    EXPECT_EQ(counting.Run("for i = 1, 1000 do end", "=s"), "s:1: " + message);
    counting.StartClock();
    EXPECT_EQ(counting.Run("for i = 1, 1000 do end", "=s"), "");
}

TEST_F(LuaStateTest, MemoryIsLimitedAndGivenBack) {
    EXPECT_EQ(Run("local s = ('x'):rep(1 << 21)"), "not enough memory");
    EXPECT_EQ(Run("t = {} for i = 1, 1e6 do t[i] = i end"), "not enough memory");
    EXPECT_EQ(Run("t = nil for i = 1, 20 do local s = ('x'):rep(1 << 18) end"), "");
}

TEST_F(LuaStateTest, AStateThatHasNoRoomForItsLibrariesIsNotMade) {
    int made = 0;
    for (std::size_t memory = 0; memory < (std::size_t{64} << 10); memory += 101) {
        LuaLimits limits;
        limits.memory = memory;
        try {
            LuaState const small(limits, "the script", OpenBase);
            ++made;
        } catch (std::bad_alloc const&) {
            EXPECT_EQ(made, 0) << memory;
        }
    }
    EXPECT_GT(made, 0);
}

int PassOn(lua_State* L) {
    lua_setglobal(L, "given");
    return 0;
}

TEST_F(LuaStateTest, WhatOpensTheStateIsGivenTheArgument) {
    int const argument = 5;
    LuaState opened(Limits(), "the script", PassOn, &argument);
    EXPECT_EQ(opened.Run("return given", "=s", 1), "");
    EXPECT_EQ(lua_touserdata(opened.Get(), 1), &argument);
}

int LineOfCaller(lua_State* L) {
    lua_Debug activation;
    lua_pushinteger(L, FindScript(L, activation) ? activation.currentline : 0);
    return 1;
}

TEST_F(LuaStateTest, FindsTheLineOfTheScript) {
    lua_register(state.Get(), "line", LineOfCaller);
    EXPECT_EQ(Run("\nassert(line() == 2)\nassert(select(2, pcall(line)) == 3)"), "");
    lua_pushcfunction(state.Get(), LineOfCaller);
    ASSERT_EQ(lua_pcall(state.Get(), 0, 1, 0), LUA_OK);
    EXPECT_EQ(lua_tointeger(state.Get(), -1), 0);
}

}  // namespace
