#include <gtest/gtest.h>

#include <typeinfo>

#include "BitStringValue.h"
#include "CharacterStringValue.h"
#include "Decoder.h"
#include "Exceptions.h"
#include "OctetStringValue.h"
#include "Utf8Encoder.h"
#include "ValueTags.h"

using test::Failure;
using test::Hex;
using test::ParseOctets;
using test::Read;
using test::Written;

namespace {

using Bits = std::vector<bool>;

constexpr auto utf8 = EncodingTypeEnum::Utf8;

Bits ReadBits(std::string_view hex) {
    return Read<BitStringValue, BitStringValueParser>(hex).GetValue();
}

int Compared(CPropertyValue const& left, CPropertyValue&& right) {
    return left.Compare(right);
}

}  // namespace

TEST(BitStringValue, WithoutBitsWritesTheOneOctetZeroAndIsReadBack) {
    EXPECT_EQ(Written(BitStringValue()), "81 00");
    EXPECT_EQ(ReadBits("81 00"), Bits());
}

TEST(BitStringValue, OfFourBitsFillsTheHighEnd) {
    EXPECT_EQ(Written(BitStringValue(Bits{true, false, true, true})), "82 04 B0");
}

TEST(BitStringValue, OfEightAndNineOnesWritesOneAndTwoOctets) {
    EXPECT_EQ(Written(BitStringValue(Bits(8, true))), "82 00 FF");
    EXPECT_EQ(Written(BitStringValue(Bits(9, true))), "83 07 FF 80");
}

TEST(BitStringValue, OfManyBitsUsesTheExtendedLength) {
    EXPECT_EQ(Written(BitStringValue(Bits(32, true))), "85 05 00 FF FF FF FF");
}

TEST(BitStringValueParser, ReadsTheUsedBits) {
    EXPECT_EQ(ReadBits("82 04 B0"), (Bits{true, false, true, true}));
    EXPECT_EQ(ReadBits("83 07 FF 80"), Bits(9, true));
    // More unused bits than one octet has are taken off the end all the same.
    EXPECT_EQ(ReadBits("83 09 FF FF"), Bits(7, true));
    EXPECT_EQ(ReadBits("82 08 FF"), Bits());
    EXPECT_EQ(ReadBits("62 04 B0"), (Bits{true, false, true, true}));
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

TEST(CharacterStringValue, WritesTheEncodingAheadOfTheOctets) {
    EXPECT_EQ(Written(CharacterStringValue("AB", utf8)), "73 00 41 42");
    EXPECT_EQ(Written(CharacterStringValue("ABCD", utf8)), "75 05 00 41 42 43 44");
    EXPECT_EQ(Written(CharacterStringValue("A", EncodingTypeEnum::Ucs2)), "72 04 41");
    EXPECT_EQ(Written(CharacterStringValue()), "71 00");
}

TEST(CharacterStringValue, OfMoreThan253OctetsIsWrittenWithTheLowOctetOfItsLength) {
    test::Octets const octets = test::WrittenOctets(CharacterStringValue(std::string(299, 'x'), utf8));
    ASSERT_EQ(octets.size(), 302U);
    EXPECT_EQ(test::ToHex({octets.begin(), octets.begin() + 4}), "75 2C 00 78");
}

TEST(CharacterStringValueParser, TakesEncodingAndOctetsOverUnchanged) {
    auto const value = Read<CharacterStringValue, CharacterStringValueParser>("72 04 41");
    EXPECT_EQ(value.GetValue(), "A");
    EXPECT_EQ(static_cast<int>(value.GetEncoding()), 4);

    auto const odd = Read<CharacterStringValue, CharacterStringValueParser>("75 05 FF 41 00 C3 28");
    EXPECT_EQ(odd.GetValue(), std::string("A\0\xC3\x28", 4));
    EXPECT_EQ(static_cast<int>(odd.GetEncoding()), 255);

    EXPECT_EQ((Read<CharacterStringValue, CharacterStringValueParser>("71 00").GetValue()), "");
}

TEST(CharacterStringValueParser, RefusesAnOctetString) {
    EXPECT_EQ(Failure<ParseException>([] { ParseOctets<CharacterStringValueParser>(Hex("62 00 41")); }),
              "tag number does not meet expectations");
}

TEST(CharacterStringValueParser, RefusesNoData) {
    EXPECT_THROW(ParseOctets<CharacterStringValueParser>(Hex("70")), ParseException);
}

TEST(OctetStringValue, OfFiveOctetsUsesTheExtendedLength) {
    EXPECT_EQ(Written(OctetStringValue(Hex("01 02 03 04 FF"))), "65 05 01 02 03 04 FF");
    EXPECT_EQ(Written(OctetStringValue()), "60");
}

TEST(OctetStringValueParser, AcceptsACharacterStringWithItsEncoding) {
    EXPECT_EQ((Read<OctetStringValue, OctetStringValueParser>("73 00 41 42").GetValue()), Hex("00 41 42"));
    EXPECT_TRUE((Read<OctetStringValue, OctetStringValueParser>("60").GetValue().empty()));
}

TEST(StringParsers, RefuseAWrapperWithoutTagsAndAConstructedFirstTag) {
    for (char const* const hex : {"", "1E 71 00 1F"}) {
        EXPECT_THROW(ParseOctets<BitStringValueParser>(Hex(hex)), ParseException);
        EXPECT_THROW(ParseOctets<CharacterStringValueParser>(Hex(hex)), ParseException);
        EXPECT_THROW(ParseOctets<OctetStringValueParser>(Hex(hex)), ParseException);
    }
}

TEST(StringCompare, OfOctetStringsLetsTheLastDifferenceDecide) {
    EXPECT_EQ(Compared(OctetStringValue(Hex("01 02")), OctetStringValue(Hex("02 01"))), 1);
    EXPECT_EQ(Compared(OctetStringValue(Hex("02 01")), OctetStringValue(Hex("01 01"))), 1);
    EXPECT_EQ(Compared(OctetStringValue(Hex("80")), OctetStringValue(Hex("7F"))), 1);
    EXPECT_EQ(Compared(OctetStringValue(Hex("01")), OctetStringValue(Hex("00 00 00"))), -2);
    EXPECT_EQ(Compared(OctetStringValue(Hex("01 02")), OctetStringValue(Hex("01 02"))), 0);
    EXPECT_THROW(Compared(OctetStringValue(), BitStringValue()), std::bad_cast);
}

TEST(StringCompare, OfBitStringsLetsTheCountAndThenTheFirstDifferenceDecide) {
    EXPECT_EQ(Compared(BitStringValue(Bits{false, true}), BitStringValue(Bits{true, false})), -1);
    EXPECT_EQ(Compared(BitStringValue(Bits{true, true}), BitStringValue(Bits{true, false})), 1);
    EXPECT_EQ(Compared(BitStringValue(Bits(5)), BitStringValue(Bits(2, true))), 3);
    EXPECT_EQ(Compared(BitStringValue(Bits{true}), BitStringValue(Bits{true})), 0);
    EXPECT_THROW(Compared(BitStringValue(), OctetStringValue()), std::bad_cast);
}

TEST(StringCompare, OfCharacterStringsLetsTheEncodingAndThenTheOctetsDecide) {
    EXPECT_EQ(Compared(CharacterStringValue("a", EncodingTypeEnum::Ucs2), CharacterStringValue("b", utf8)),
              4);
    EXPECT_EQ(Compared(CharacterStringValue("ab", utf8), CharacterStringValue("ac", utf8)), -1);
    EXPECT_EQ(Compared(CharacterStringValue("abc", utf8), CharacterStringValue("ab", utf8)), 1);
    EXPECT_EQ(Compared(CharacterStringValue("\xC3", utf8), CharacterStringValue("z", utf8)), 1);
    EXPECT_EQ(Compared(CharacterStringValue("ab", utf8), CharacterStringValue("ab", utf8)), 0);
    EXPECT_THROW(Compared(CharacterStringValue(), OctetStringValue()), std::bad_cast);
}

TEST(Utf8Encoder, CopiesOctetsAndGivesNoString) {
    EXPECT_EQ(Utf8Encoder().GetBytes("A\xFF"), Hex("41 FF"));
    EXPECT_EQ(Utf8Encoder().GetString(Hex("41")), "");
}

TEST(Decoder, GivesTheOctetAtThePointer) {
    char octets[] = {'a', 'b'};
    EXPECT_EQ(Decoder::GetValue(octets + 1), 'b');
}
