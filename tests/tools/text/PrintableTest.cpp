#include "Printable.h"

#include <gtest/gtest.h>

#include <clocale>
#include <random>

using namespace tools;

namespace {

class PrintableText : public testing::Test {
protected:
    void SetUp() override { std::setlocale(LC_CTYPE, "C.UTF-8"); }
};

TEST_F(PrintableText, IsTheTextItself) {
    EXPECT_EQ(Printable("Zuluft °C 温度"), "Zuluft °C 温度");
    EXPECT_EQ(Printable(""), "");
}

TEST_F(PrintableText, EscapesWhatSteersATerminal) {
    EXPECT_EQ(Printable("a\nb\tc\rd"), "a\\nb\\tc\\rd");
    EXPECT_EQ(Printable("\x1B[2J\x7F"), "\\x1B[2J\\x7F");
    EXPECT_EQ(Printable(std::string_view("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(Printable("\xC2\x9B"
                        "x"),
              "\\x9Bx");
    EXPECT_EQ(Printable("\xE2\x80\xAE"
                        "x"),
              "\xEF\xBF\xBDx");
}

TEST_F(PrintableText, ReplacesWhatIsNoUtf8) {
    std::string const mark = "\xEF\xBF\xBD";
    EXPECT_EQ(Printable("\xFF"), mark);
    EXPECT_EQ(Printable("a\xC3"), "a" + mark);
    EXPECT_EQ(Printable("\xC0\x80"), mark + mark);
    EXPECT_EQ(Printable("\xED\xA0\x80"), mark + mark + mark);
    EXPECT_EQ(Printable("\xF5\x80\x80\x80"), mark + mark + mark + mark);
}

TEST_F(PrintableText, IsCutAfterTheLastWholeCharacterThatFits) {
    EXPECT_EQ(Printable("abc", 3), "abc");
    EXPECT_EQ(Printable("abcd", 3), "abc...");
    EXPECT_EQ(Printable("\n\n\n", 5), "\\n\\n...");
    EXPECT_EQ(Printable("a\x1B[2J", 4), "a...");
    EXPECT_EQ(Printable("aä€", 3), "aä...");
    EXPECT_EQ(Printable("aä€", 6), "aä€");
    EXPECT_EQ(Printable("a", 0), "...");
}

TEST_F(PrintableText, IsQuotedInAMessageAndCutAfter60Octets) {
    EXPECT_EQ(Quoted("AHU 1"), "\"AHU 1\"");
    EXPECT_EQ(Quoted(""), "\"\"");
    EXPECT_EQ(Quoted("a\nb\xFF"), "\"a\\nb\xEF\xBF\xBD\"");
    std::string const whole(60, 'x');
    EXPECT_EQ(Quoted(whole), '"' + whole + '"');
    EXPECT_EQ(Quoted(whole + "y"), '"' + whole + "...\"");
}

TEST_F(PrintableText, FitsToColumnsAndNotToOctets) {
    EXPECT_EQ(FitTo("°C", 4), "°C  ");
    EXPECT_EQ(FitToRight("°C", 4), "  °C");
    EXPECT_EQ(FitTo("abcdef", 4), "abc…");
    EXPECT_EQ(FitTo("温度計", 6), "温度計");
    EXPECT_EQ(FitTo("温度計", 5), "温度…");
    EXPECT_EQ(FitTo("温度計", 4), "温… ");
    EXPECT_EQ(FitTo("abc", 0), "");
    EXPECT_EQ(FitTo("abc", 1), "…");
}

TEST_F(PrintableText, RandomOctetsBecomeOneSafeLineOfTheRightWidth) {
    std::mt19937 random(5);
    for (int i = 0; i < 10000; ++i) {
        std::string octets(random() % 24, ' ');
        for (char& c : octets) {
            c = static_cast<char>(random());
        }
        std::string const printable = Printable(octets);
        EXPECT_EQ(ValidUtf8(printable), printable);
        for (unsigned char const c : printable) {
            EXPECT_TRUE(c >= 0x20 && c != 0x7F);
        }
        std::size_t const width = random() % 30;
        EXPECT_EQ(DisplayWidth(FitTo(printable, width)), width);
        EXPECT_EQ(DisplayWidth(FitToRight(printable, width)), width);
    }
}

}  // namespace
