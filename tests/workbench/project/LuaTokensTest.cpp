#include "LuaTokens.h"

#include <gtest/gtest.h>

#include <random>

using workbench::LuaToken;
using workbench::LuaTokens;

namespace {

// The tokens of a text with their lines.
std::vector<std::string> Read(std::string const& text) {
    std::vector<std::string> tokens;
    LuaTokens reader(text);
    for (LuaToken token = reader.Next(); token.kind != LuaToken::Kind::End; token = reader.Next()) {
        tokens.push_back(std::to_string(token.line) + " " + std::string(token.source));
    }
    return tokens;
}

std::string Value(std::string const& source) {
    LuaTokens reader(source);
    LuaToken const token = reader.Next();
    EXPECT_EQ(token.kind, LuaToken::Kind::Text);
    EXPECT_EQ(token.source, source);
    return ValueOf(token);
}

using Tokens = std::vector<std::string>;

TEST(LuaTokens, AreNamesNumbersTextsAndSymbols) {
    EXPECT_EQ(Read("a_1 = {\n0x1F, 1.5e3 'b' } == ..."),
              (Tokens{"1 a_1", "1 =", "1 {", "2 0x1F", "2 ,", "2 1.5e3", "2 'b'", "2 }", "2 ==", "2 .", "2 .",
                      "2 ."}));
}

TEST(LuaTokens, CommentsAreSkipped) {
    EXPECT_EQ(Read("-- x\na --[[ b\n ]] c --[==[ ]] \n ]==] d --[ e\n- f"),
              (Tokens{"2 a", "3 c", "4 d", "5 -", "5 f"}));
    EXPECT_EQ(Read("a --[[ without end \n b"), Tokens{"1 a"});
}

TEST(LuaTokens, TextsHaveTheirValues) {
    EXPECT_EQ(Value(R"("a'b")"), "a'b");
    EXPECT_EQ(Value(R"('a\'b\\')"), "a'b\\");
    EXPECT_EQ(Value(R"("\n\t\65\066\x43\"")"), "\n\tABC\"");
    EXPECT_EQ(Value("\"a\\z \n b\""), "ab");
    EXPECT_EQ(Value("[[\na]b]]"), "a]b");
    EXPECT_EQ(Value("[==[a]]b]==]"), "a]]b");
    EXPECT_EQ(Value("\"\""), "");
}

TEST(LuaTokens, ATextOfSeveralLinesCountsThem) {
    EXPECT_EQ(Read("[[\n\n]] a 'b\\\nc' d"), (Tokens{"1 [[\n\n]]", "3 a", "3 'b\\\nc'", "4 d"}));
}

TEST(LuaTokens, AnyTextEnds) {
    constexpr char letters[] = "[]=-\"'\\\n{}aN0.xz\xFF";
    std::mt19937 random(5);
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (unsigned length = random() % 24; length > 0; --length) {
            text += letters[random() % (sizeof letters - 1)];
        }
        LuaTokens reader(text);
        std::size_t end = 0;
        for (LuaToken token = reader.Next(); token.kind != LuaToken::Kind::End; token = reader.Next()) {
            ASSERT_GE(token.position, end) << text;
            ASSERT_FALSE(token.source.empty()) << text;
            end = token.position + token.source.size();
            ASSERT_LE(end, text.size()) << text;
            if (token.kind == LuaToken::Kind::Text) {
                ASSERT_LE(ValueOf(token).size(), token.source.size()) << text;
            }
        }
    }
}

}  // namespace
