#include <gtest/gtest.h>

#include <typeinfo>

#include "BinaryValue.h"
#include "EnumValue.h"
#include "ValueTags.h"

using test::Compared;
using test::Hex;
using test::ParseOctets;
using test::Written;

namespace {

BinaryValue Binary(int value) {
    return BinaryValue(static_cast<BACnetBinaryPV>(value));
}

int ReadBinary(std::string_view hex) {
    return static_cast<int>(test::Read<BinaryValue, BinaryValueParser>(hex).GetValue());
}

}  // namespace

TEST(BinaryValue, OfOneWritesOneEnumeratedOctet) {
    EXPECT_EQ(Written(Binary(1)), "91 01");
}

TEST(BinaryValue, WritesTheLowEightBits) {
    EXPECT_EQ(Written(Binary(0)), "91 00");
    EXPECT_EQ(Written(Binary(0x1FE)), "91 FE");
}

TEST(BinaryValueParser, RefusesTwoOctetsAndReadsOne) {
    EXPECT_THROW(ParseOctets<BinaryValueParser>(Hex("92 00 01")), ArgumentOutOfRangeException);
    EXPECT_EQ(ReadBinary("91 01"), 1);
}

TEST(BinaryValueParser, RefusesNoOctet) {
    EXPECT_THROW(ParseOctets<BinaryValueParser>(Hex("90")), ArgumentOutOfRangeException);
}

TEST(BinaryValueParser, AcceptsAnyOctetOfAnyTag) {
    EXPECT_EQ(ReadBinary("91 FF"), 255);
    EXPECT_EQ(ReadBinary("21 02"), 2);
    EXPECT_EQ(ReadBinary("09 00"), 0);
}

TEST(BinaryValue, ComparesAsSignedNumbersToMinusOneZeroOrOne) {
    EXPECT_EQ(Compared(Binary(7), Binary(3)), 1);
    EXPECT_EQ(Compared(Binary(3), Binary(3)), 0);
    EXPECT_EQ(Compared(Binary(-1), Binary(3)), -1);
    EXPECT_THROW(Compared(Binary(1), EnumValue(1)), std::bad_cast);
}
