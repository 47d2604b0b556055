#include <gtest/gtest.h>

#include <typeinfo>

#include "CharacterStringValue.h"
#include "OctetStringValue.h"
#include "ValueTags.h"

using test::Compared;
using test::ParseFailure;
using test::Written;

namespace {

constexpr auto Utf8 = EncodingTypeEnum::Utf8;

CharacterStringValue ReadCharacters(std::string_view hex) {
    return test::Read<CharacterStringValue, CharacterStringValueParser>(hex);
}

}  // namespace

TEST(CharacterStringValue, OfTwoAndOfFourOctetsWritesTheEncodingBeforeThem) {
    EXPECT_EQ(Written(CharacterStringValue("AB", Utf8)), "73 00 41 42");
    EXPECT_EQ(Written(CharacterStringValue("ABCD", Utf8)), "75 05 00 41 42 43 44");
}

TEST(CharacterStringValue, WritesItsOctetsUnchangedWhateverTheEncoding) {
    EXPECT_EQ(Written(CharacterStringValue("A", EncodingTypeEnum::Ucs2)), "72 04 41");
    EXPECT_EQ(Written(CharacterStringValue(std::string("\0\xFF", 2), Utf8)), "73 00 00 FF");
    EXPECT_EQ(Written(CharacterStringValue()), "71 00");
}

TEST(CharacterStringValue, OfMoreThan253OctetsIsWrittenWithTheLowOctetOfItsLength) {
    test::Octets const octets = test::WrittenOctets(CharacterStringValue(std::string(299, 'x'), Utf8));
    ASSERT_EQ(octets.size(), 302U);
    EXPECT_EQ(test::ToHex({octets.begin(), octets.begin() + 4}), "75 2C 00 78");
}

TEST(CharacterStringValueParser, CopiesTheEncodingAndTheOctetUnchanged) {
    CharacterStringValue const value = ReadCharacters("72 04 41");
    EXPECT_EQ(value.GetValue(), "\x41");
    EXPECT_EQ(static_cast<int>(value.GetEncoding()), 4);
}

TEST(CharacterStringValueParser, CopiesZerosAndInvalidOctets) {
    CharacterStringValue const value = ReadCharacters("75 05 FF 41 00 C3 28");
    EXPECT_EQ(value.GetValue(), std::string("A\0\xC3\x28", 4));
    EXPECT_EQ(static_cast<int>(value.GetEncoding()), 255);
}

TEST(CharacterStringValueParser, GivesAnEmptyTextForTheEncodingAlone) {
    EXPECT_EQ(ReadCharacters("71 00").GetValue(), "");
}

TEST(CharacterStringValueParser, AcceptsAnyClass) {
    EXPECT_EQ(ReadCharacters("7A 00 41").GetValue(), "A");
}

TEST(CharacterStringValueParser, RefusesAnOctetStringForItsTagNumber) {
    EXPECT_EQ(ParseFailure<CharacterStringValueParser>("62 00 41"), "tag number does not meet expectations");
    // The number is checked first.
    EXPECT_EQ(ParseFailure<CharacterStringValueParser>("60"), "tag number does not meet expectations");
}

TEST(CharacterStringValueParser, RefusesNoData) {
    EXPECT_THROW(test::ParseOctets<CharacterStringValueParser>(test::Hex("70")), ParseException);
}

TEST(CharacterStringValue, ComparesByEncodingAndThenByOctets) {
    EXPECT_EQ(Compared(CharacterStringValue("a", EncodingTypeEnum::Ucs2), CharacterStringValue("b", Utf8)),
              4);
    EXPECT_EQ(Compared(CharacterStringValue("ab", Utf8), CharacterStringValue("ac", Utf8)), -1);
    EXPECT_EQ(Compared(CharacterStringValue("abc", Utf8), CharacterStringValue("ab", Utf8)), 1);
    EXPECT_EQ(Compared(CharacterStringValue("\xC3", Utf8), CharacterStringValue("z", Utf8)), 1);
    EXPECT_EQ(Compared(CharacterStringValue("ab", Utf8), CharacterStringValue("ab", Utf8)), 0);
    EXPECT_THROW(Compared(CharacterStringValue(), OctetStringValue()), std::bad_cast);
}
