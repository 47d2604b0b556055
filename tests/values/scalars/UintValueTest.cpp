#include <gtest/gtest.h>

#include <typeinfo>

#include "IntValue.h"
#include "UintValue.h"
#include "ValueTags.h"

using test::Compared;
using test::Written;

namespace {

constexpr unsigned long long TwoTo32 = 1ULL << 32;
constexpr unsigned long long TwoTo40 = 1ULL << 40;

unsigned long long ReadUint(std::string_view hex) {
    return test::Read<UintValue, UintValueParser>(hex).GetValue();
}

}  // namespace

TEST(UintValue, OfZero256AndTwoTo40WritesNoLeadingZeros) {
    EXPECT_EQ(Written(UintValue(0)), "21 00");
    EXPECT_EQ(Written(UintValue(256)), "22 01 00");
    EXPECT_EQ(Written(UintValue(TwoTo40)), "25 06 01 00 00 00 00 00");

    Tag const tag = UintValue(TwoTo40).ToApplicationTag();
    EXPECT_EQ(tag.GetValLenType(), 5);
    EXPECT_EQ(tag.GetAdditionalLength(), 6);
}

TEST(UintValue, UsesTheExtendedLengthFromFiveOctets) {
    EXPECT_EQ(Written(UintValue(TwoTo32 - 1)), "24 FF FF FF FF");
    EXPECT_EQ(Written(UintValue(TwoTo32)), "25 05 01 00 00 00 00");
    EXPECT_EQ(Written(UintValue(~0ULL)), "25 08 FF FF FF FF FF FF FF FF");
    EXPECT_EQ(Written(UintValue()), "21 00");
}

TEST(UintValueParser, ReadsEmptyDataAsZero) {
    EXPECT_EQ(ReadUint("20"), 0U);
    // A Boolean never has data, so it is read as 0 where a number is expected.
    EXPECT_EQ(ReadUint("11"), 0U);
}

TEST(UintValueParser, ReadsTheFirstTagOnlyWhateverItsNumberAndClass) {
    EXPECT_EQ(ReadUint("22 01 02 21 05"), 258U);
    EXPECT_EQ(ReadUint("09 07"), 7U);
    EXPECT_EQ(ReadUint("31 FF"), 255U);
}

TEST(UintValue, ComparesAsEqualIfTheLow32BitsAre) {
    EXPECT_EQ(Compared(UintValue(7), UintValue(7 + 5 * TwoTo32)), 0);
}

TEST(UintValue, ComparesByTheDifferenceOfTheLow32Bits) {
    EXPECT_EQ(Compared(UintValue(9), UintValue(7 + TwoTo32)), 2);
    EXPECT_EQ(Compared(UintValue(7), UintValue(9)), -2);
    EXPECT_EQ(Compared(UintValue(0), UintValue(TwoTo32 - 1)), 1);
    EXPECT_THROW(Compared(UintValue(1), IntValue(1)), std::bad_cast);
}
