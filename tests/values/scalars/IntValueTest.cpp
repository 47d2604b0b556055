#include <gtest/gtest.h>

#include <limits>
#include <typeinfo>

#include "IntValue.h"
#include "UintValue.h"
#include "ValueTags.h"

using test::Compared;
using test::Written;

namespace {

long long ReadInt(std::string_view hex) {
    return test::Read<IntValue, IntValueParser>(hex).GetValue();
}

}  // namespace

TEST(IntValue, OfMinusOneWritesEightOctetsAndOf200One) {
    EXPECT_EQ(Written(IntValue(-1)), "35 08 FF FF FF FF FF FF FF FF");
    EXPECT_EQ(Written(IntValue(200)), "31 C8");
}

TEST(IntValue, LosesItsLeadingZerosButOne) {
    EXPECT_EQ(Written(IntValue()), "31 00");
    EXPECT_EQ(Written(IntValue(0x8000)), "32 80 00");
    EXPECT_EQ(Written(IntValue(std::numeric_limits<long long>::min())), "35 08 80 00 00 00 00 00 00 00");
}

TEST(IntValueParser, ReadsTheOneOctetFFAs255) {
    EXPECT_EQ(ReadInt("31 FF"), 255);
}

TEST(IntValueParser, DoesNotExtendTheSign) {
    EXPECT_EQ(ReadInt("30"), 0);
    EXPECT_EQ(ReadInt("32 FF 38"), 65336);
    EXPECT_EQ(ReadInt("35 07 FF FF FF FF FF FF FF"), 0xFFFFFFFFFFFFFF);
    EXPECT_EQ(ReadInt("35 08 FF FF FF FF FF FF FF FF"), -1);
}

TEST(IntValue, ComparesByTheDifferenceOfTheLow32Bits) {
    EXPECT_EQ(Compared(IntValue(-5), IntValue(5)), -10);
    EXPECT_EQ(Compared(IntValue(-1), IntValue(0xFFFFFFFF)), 0);
    EXPECT_EQ(Compared(IntValue(0), IntValue(std::numeric_limits<long long>::min())), 0);
    EXPECT_THROW(Compared(IntValue(1), UintValue(1)), std::bad_cast);
}
