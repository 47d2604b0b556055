#include <gtest/gtest.h>

#include <typeinfo>

#include "BitStringValue.h"
#include "OctetStringValue.h"
#include "ValueTags.h"

using test::Compared;
using test::Hex;
using test::ParseOctets;
using test::Written;

namespace {

using Bits = std::vector<bool>;

Bits ReadBits(std::string_view hex) {
    return test::Read<BitStringValue, BitStringValueParser>(hex).GetValue();
}

}  // namespace

TEST(BitStringValue, WithoutBitsWritesTheOneOctetZeroAndIsReadBack) {
    EXPECT_EQ(Written(BitStringValue()), "81 00");
    EXPECT_EQ(ReadBits("81 00"), Bits());
}

TEST(BitStringValue, OfFourBitsFillsTheHighBits) {
    EXPECT_EQ(Written(BitStringValue(Bits{true, false, true, true})), "82 04 B0");
}

TEST(BitStringValue, OfEightAndNineOnesWritesOneAndTwoOctets) {
    EXPECT_EQ(Written(BitStringValue(Bits(8, true))), "82 00 FF");
    EXPECT_EQ(Written(BitStringValue(Bits(9, true))), "83 07 FF 80");
}

TEST(BitStringValue, OfManyBitsUsesTheExtendedLength) {
    EXPECT_EQ(Written(BitStringValue(Bits(24, true))), "84 00 FF FF FF");
    EXPECT_EQ(Written(BitStringValue(Bits(32, true))), "85 05 00 FF FF FF FF");
}

TEST(BitStringValueParser, ReadsFourUsedBits) {
    EXPECT_EQ(ReadBits("82 04 B0"), (Bits{true, false, true, true}));
}

TEST(BitStringValueParser, ReadsTheUsedBitsOfAnyTag) {
    EXPECT_EQ(ReadBits("83 07 FF 80"), Bits(9, true));
    EXPECT_EQ(ReadBits("62 04 B0"), (Bits{true, false, true, true}));
    EXPECT_EQ(ReadBits("0A 04 B0"), (Bits{true, false, true, true}));
}

TEST(BitStringValueParser, RemovesMoreUnusedBitsThanAnOctetHas) {
    EXPECT_EQ(ReadBits("83 09 FF FF"), Bits(7, true));
    EXPECT_EQ(ReadBits("82 08 FF"), Bits());
}

TEST(BitStringValueParser, RefusesNoDataAndMoreUnusedBitsThanBits) {
    EXPECT_THROW(ParseOctets<BitStringValueParser>(Hex("80")), ParseException);
    EXPECT_THROW(ParseOctets<BitStringValueParser>(Hex("81 04")), ParseException);
    EXPECT_THROW(ParseOctets<BitStringValueParser>(Hex("82 09 FF")), ParseException);
    EXPECT_THROW(ParseOctets<BitStringValueParser>(Hex("82 FF FF")), ParseException);
}

TEST(BitStringValue, OfEveryLengthSurvivesWritingAndReading) {
    for (std::size_t count = 0; count < 70; ++count) {
        Bits bits(count);
        for (std::size_t i = 0; i < count; ++i) {
            bits[i] = i * i % 3 == 1;
        }
        EXPECT_EQ(ReadBits(Written(BitStringValue(bits))), bits) << count;
    }
}

TEST(BitStringValue, ComparesByCountAndThenByTheFirstDifference) {
    EXPECT_EQ(Compared(BitStringValue(Bits{false, true}), BitStringValue(Bits{true, false})), -1);
    EXPECT_EQ(Compared(BitStringValue(Bits{true, true}), BitStringValue(Bits{true, false})), 1);
    EXPECT_EQ(Compared(BitStringValue(Bits(5)), BitStringValue(Bits(2, true))), 3);
    EXPECT_EQ(Compared(BitStringValue(Bits{true}), BitStringValue(Bits{true})), 0);
    EXPECT_THROW(Compared(BitStringValue(), OctetStringValue()), std::bad_cast);
}

TEST(BitStringValue, GivesTheBitsThatWereSet) {
    BitStringValue value;
    value.SetValue(Bits{true});
    EXPECT_EQ(value.GetValue(), Bits{true});
}
