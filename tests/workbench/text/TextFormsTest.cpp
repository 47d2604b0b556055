#include <gtest/gtest.h>

#include <clocale>
#include <random>

#include "NumberText.h"
#include "Printable.h"
#include "TypeName.h"

using namespace workbench;

namespace {

class TextForms : public testing::Test {
protected:
    void SetUp() override { std::setlocale(LC_CTYPE, "C.UTF-8"); }
};

TEST_F(TextForms, NumbersAreAsShortAsTheyCanBe) {
    EXPECT_EQ(NumberText(21.5f), "21.5");
    EXPECT_EQ(NumberText(0.1f), "0.1");
    EXPECT_EQ(NumberText(0.1), "0.1");
    EXPECT_EQ(NumberText(100.0), "100");
    EXPECT_EQ(NumberText(-0.0), "-0");
    EXPECT_EQ(NumberText(1e30), "1e+30");
    EXPECT_EQ(NumberText(std::stof("nan")), "nan");
    EXPECT_EQ(NumberText(-std::stod("inf")), "-inf");
}

TEST_F(TextForms, NumbersReadBackAsTheSame) {
    std::mt19937_64 random(3);
    for (int i = 0; i < 10000; ++i) {
        double const value = static_cast<double>(random()) * 1e-7 - 1e11;
        EXPECT_EQ(std::stod(NumberText(value)), value);
        EXPECT_EQ(std::stof(NumberText(static_cast<float>(value))), static_cast<float>(value));
    }
}

TEST_F(TextForms, PrintableKeepsText) {
    EXPECT_EQ(Printable("Zuluft °C 温度"), "Zuluft °C 温度");
    EXPECT_EQ(Printable(""), "");
}

TEST_F(TextForms, PrintableEscapesControlCharacters) {
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

TEST_F(TextForms, PrintableReplacesInvalidUtf8) {
    std::string const mark = "\xEF\xBF\xBD";
    EXPECT_EQ(Printable("\xFF"), mark);
    EXPECT_EQ(Printable("a\xC3"), "a" + mark);
    EXPECT_EQ(Printable("\xC0\x80"), mark + mark);
    EXPECT_EQ(Printable("\xED\xA0\x80"), mark + mark + mark);
    EXPECT_EQ(Printable("\xF5\x80\x80\x80"), mark + mark + mark + mark);
}

TEST_F(TextForms, FitsToColumnsAndNotToOctets) {
    EXPECT_EQ(FitTo("°C", 4), "°C  ");
    EXPECT_EQ(FitToRight("°C", 4), "  °C");
    EXPECT_EQ(FitTo("abcdef", 4), "abc…");
    EXPECT_EQ(FitTo("温度計", 6), "温度計");
    EXPECT_EQ(FitTo("温度計", 5), "温度…");
    EXPECT_EQ(FitTo("温度計", 4), "温… ");
    EXPECT_EQ(FitTo("abc", 0), "");
    EXPECT_EQ(FitTo("abc", 1), "…");
}

TEST_F(TextForms, RandomOctetsBecomeOneSafeLineOfTheRightWidth) {
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

TEST_F(TextForms, TypesHaveNamesAndNumbers) {
    EXPECT_EQ(FindType("Float"), OpcUaType_Float);
    EXPECT_EQ(FindType("dataVALUE"), OpcUaType_DataValue);
    EXPECT_EQ(FindType(13), OpcUaType_DateTime);
    EXPECT_FALSE(FindType("Guid"));
    EXPECT_FALSE(FindType(std::string_view("Float\0x", 7)));
    EXPECT_FALSE(FindType(14));
    EXPECT_FALSE(FindType(0));
    EXPECT_EQ(TypeName(OpcUaType_String), "String");
    EXPECT_EQ(TypeName({OpcUaType_DataValue, OpcUaType_Int32}), "DataValue(Int32)");
    EXPECT_EQ(TypeName(OpcUaType_Guid), "Type 14");
}

}  // namespace
