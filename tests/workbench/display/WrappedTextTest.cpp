#include "WrappedText.h"

#include <gtest/gtest.h>

#include <clocale>

#include "Printable.h"

using namespace workbench;

namespace {

using Lines = std::vector<std::string>;

TEST(WrappedText, IsBrokenAfterBlanks) {
    EXPECT_EQ(Wrapped("one two three", 8), (Lines{"one two", "three"}));
    EXPECT_EQ(Wrapped("one two", 7), (Lines{"one two"}));
    EXPECT_EQ(Wrapped("one  two", 4), (Lines{"one", "two"}));
    EXPECT_EQ(Wrapped("", 4), (Lines{""}));
}

TEST(WrappedText, AWordThatIsTooLongIsBrokenInside) {
    EXPECT_EQ(Wrapped("abcdefg hi", 3), (Lines{"abc", "def", "g", "hi"}));
}

TEST(WrappedText, CharactersStayWholeAndLinesFit) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    std::string text;
    for (int i = 0; i < 300; ++i) {
        text += i % 7 == 0 ? " " : i % 3 == 0 ? "\xE5\xB9\xB3" : "\xC3\xA4";
    }
    std::size_t octets = 0;
    for (std::string const& line : Wrapped(text, 11)) {
        EXPECT_LE(tools::DisplayWidth(line), 11u);
        EXPECT_EQ(tools::ValidUtf8(line), line);
        octets += line.size();
    }
    EXPECT_GT(octets, text.size() - 100);
    EXPECT_EQ(Wrapped("\xE5\xB9\xB3\xE5\xB9\xB3", 1), (Lines{"\xE5\xB9\xB3", "\xE5\xB9\xB3"}));
}

}  // namespace
