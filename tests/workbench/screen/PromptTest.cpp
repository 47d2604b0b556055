#include "Prompt.h"

#include <gtest/gtest.h>

#include "KeyDecoder.h"

using namespace workbench;

namespace {

// Types what a terminal sends, and returns the lines that Enter ended, with "|" between them.
std::string Type(Prompt& prompt, std::string const& octets) {
    KeyDecoder decoder;
    std::string lines;
    for (Key const& key : decoder.Feed(octets)) {
        std::string const line = prompt.Handle(key);
        lines += line.empty() ? "" : (lines.empty() ? "" : "|") + line;
    }
    for (Key const& key : decoder.Flush()) {
        prompt.Handle(key);
    }
    return lines;
}

TEST(Prompt, EnterEndsTheLine) {
    Prompt prompt({});
    EXPECT_FALSE(prompt.IsOpen());
    prompt.Open("A.x = ");
    EXPECT_TRUE(prompt.IsOpen());
    EXPECT_EQ(Type(prompt, "21"), "");
    EXPECT_EQ(prompt.Line().Text(), "A.x = 21");
    EXPECT_EQ(Type(prompt, "\r"), "A.x = 21");
    EXPECT_FALSE(prompt.IsOpen());
}

TEST(Prompt, EscapeDiscardsTheLine) {
    Prompt prompt({});
    prompt.Open("");
    Type(prompt, "abc\x1B");
    EXPECT_FALSE(prompt.IsOpen());
    prompt.Open("");
    EXPECT_EQ(prompt.Line().Text(), "");
}

TEST(Prompt, IsEditedInTheMiddle) {
    Prompt prompt({});
    prompt.Open("");
    Type(prompt,
         "a\xC3\xA4"
         "bc\x1B[D\x1B[D\x7F");
    EXPECT_EQ(prompt.Line().Text(), "abc");
    EXPECT_EQ(prompt.Line().Cursor(), 1u);
    Type(prompt, "\x1B[3~x\x1B[Hy\x1B[Fz");
    EXPECT_EQ(prompt.Line().Text(), "yaxcz");
    Type(prompt, "\x1B[D\x1B[D\x1B[D\x1B[D\x1B[D\x1B[D\x7F\x1B[F\x1B[C\x1B[3~");
    EXPECT_EQ(prompt.Line().Text(), "yaxcz");
    Type(prompt, "\x15w\xE2\x82\xAC\x1B[D\x1B[3~");
    EXPECT_EQ(prompt.Line().Text(), "w");
}

TEST(Prompt, TabCompletesAsFarAsTheNamesAgreeAndListsTheCandidates) {
    Prompt prompt({"Meter.Reset", "AHU.Setpoint", "AHU.Setback", "AHU.Setback"});
    prompt.Open("");
    Type(prompt, "A\t");
    EXPECT_EQ(prompt.Line().Text(), "AHU.Set");
    EXPECT_EQ(prompt.Candidates(), (std::vector<std::string>{"AHU.Setback", "AHU.Setpoint"}));
    Type(prompt, "p");
    EXPECT_TRUE(prompt.Candidates().empty());
    Type(prompt, "\t");
    EXPECT_EQ(prompt.Line().Text(), "AHU.Setpoint");
    EXPECT_TRUE(prompt.Candidates().empty());
    Type(prompt, " = 1\t");
    EXPECT_EQ(prompt.Line().Text(), "AHU.Setpoint = 1");
}

TEST(Prompt, TabEndsBetweenCharacters) {
    Prompt prompt({"A\xC3\xA4", "A\xC3\xB6"});
    prompt.Open("");
    Type(prompt, "\t");
    EXPECT_EQ(prompt.Line().Text(), "A");
}

TEST(Prompt, UpAndDownBringEarlierLines) {
    Prompt prompt({});
    for (char const* const line : {"one", "two", "two"}) {
        prompt.Open(line);
        Type(prompt, "\r");
    }
    prompt.Open("new");
    Type(prompt, "\x1B[A");
    EXPECT_EQ(prompt.Line().Text(), "two");
    Type(prompt, "\x1B[A\x1B[A");
    EXPECT_EQ(prompt.Line().Text(), "one");
    Type(prompt, "\x1B[B\x1B[B\x1B[B");
    EXPECT_EQ(prompt.Line().Text(), "new");
}

TEST(Prompt, IsBounded) {
    Prompt prompt({});
    prompt.Open("");
    Type(prompt, std::string(10000, 'x'));
    EXPECT_EQ(prompt.Line().Text().size(), 4096u);
    for (int i = 0; i < 1000; ++i) {
        prompt.Open(std::to_string(i));
        Type(prompt, "\r");
    }
    prompt.Open("");
    for (int i = 0; i < 1000; ++i) {
        Type(prompt, "\x1B[A");
    }
    EXPECT_EQ(prompt.Line().Text(), "900");
}

}  // namespace
