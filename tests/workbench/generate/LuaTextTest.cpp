#include "LuaText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <lua.hpp>
#include <memory>
#include <random>

using namespace workbench;

namespace {

std::string Evaluated(std::string const& expression) {
    std::unique_ptr<lua_State, decltype(&lua_close)> const lua(luaL_newstate(), &lua_close);
    luaL_openlibs(lua.get());
    std::string const chunk = "return " + expression;
    EXPECT_EQ(luaL_loadbuffer(lua.get(), chunk.data(), chunk.size(), "=text"), LUA_OK) << chunk;
    EXPECT_EQ(lua_pcall(lua.get(), 0, 1, 0), LUA_OK) << chunk;
    std::size_t length = 0;
    char const* const text = lua_tolstring(lua.get(), -1, &length);
    return text ? std::string(text, length) : std::string();
}

}  // namespace

TEST(LuaText, LiteralsHaveTheOctetsOfTheText) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        std::string text;
        for (std::size_t i = random() % 40; i > 0; --i) {
            text += static_cast<char>(random() % 3 == 0 ? random() % 256
                                                        : "\"\\\n a9\x80\xC3\xA9\r]0"[random() % 13]);
        }
        std::string const literal = LuaString(text);
        EXPECT_EQ(literal.find('\n'), std::string::npos);
        EXPECT_EQ(Evaluated(literal), text);
    }
    EXPECT_EQ(LuaString("Kälte \"1\""), "\"Kälte \\\"1\\\"\"");
}

TEST(LuaText, CommentsNeverEndEarly) {
    EXPECT_EQ(LuaComment("[[a\rb\nreturn 1"), "-- [[a\\rb\n-- return 1\n");
    EXPECT_EQ(LuaComment("a\n\nb", 4), "    -- a\n    --\n    -- b\n");
}

TEST(LuaText, NumbersAreReadBack) {
    EXPECT_EQ(LuaNumber(0.1f), "0.1");
    EXPECT_EQ(LuaNumber(21.0), "21");
    EXPECT_EQ(Evaluated("tostring(" + LuaNumber(std::numeric_limits<double>::infinity()) + " == math.huge)"),
              "true");
    EXPECT_EQ(Evaluated("tostring(" + LuaNumber(-HUGE_VALF) + " == -math.huge)"), "true");
    std::string const nan = LuaNumber(std::nan(""));
    EXPECT_EQ(Evaluated("tostring(" + nan + " ~= " + nan + ")"), "true");
}
