#include <gtest/gtest.h>

#include <typeinfo>

#include "BitStringValue.h"
#include "OctetStringValue.h"
#include "ValueTags.h"

using test::Compared;
using test::Hex;
using test::Written;

namespace {

OctetStringValue Octets(std::string_view hex) {
    return OctetStringValue(Hex(hex));
}

test::Octets ReadOctets(std::string_view hex) {
    return test::Read<OctetStringValue, OctetStringValueParser>(hex).GetValue();
}

}  // namespace

TEST(OctetStringValue, OfFiveOctetsUsesTheExtendedLength) {
    EXPECT_EQ(Written(Octets("01 02 03 04 FF")), "65 05 01 02 03 04 FF");
}

TEST(OctetStringValue, OfFewerOctetsWritesTheLengthInTheFirstOctet) {
    EXPECT_EQ(Written(OctetStringValue()), "60");
    EXPECT_EQ(Written(Octets("01 02 03 04")), "64 01 02 03 04");
}

TEST(OctetStringValueParser, AcceptsACharacterStringWithItsEncoding) {
    EXPECT_EQ(ReadOctets("73 00 41 42"), Hex("00 41 42"));
}

TEST(OctetStringValueParser, GivesNoOctetsForNoData) {
    EXPECT_EQ(ReadOctets("60"), Hex(""));
}

TEST(OctetStringValue, ComparedLetsTheLastOctetDecideFirst) {
    EXPECT_EQ(Compared(Octets("01 02"), Octets("02 01")), 1);
}

TEST(OctetStringValue, ComparesBySizeAndThenByTheDifference) {
    EXPECT_EQ(Compared(Octets("07 01"), Octets("01 01")), 6);
    EXPECT_EQ(Compared(Octets("80"), Octets("7F")), 1);
    EXPECT_EQ(Compared(Octets("00"), Octets("FF")), -255);
    EXPECT_EQ(Compared(Octets("01"), Octets("00 00 00")), -2);
    EXPECT_EQ(Compared(Octets("01 02"), Octets("01 02")), 0);
    EXPECT_THROW(Compared(OctetStringValue(), BitStringValue()), std::bad_cast);
}

TEST(OctetStringValue, GivesTheOctetsThatWereSet) {
    OctetStringValue value;
    value.SetValue(Hex("05"));
    EXPECT_EQ(value.GetValue(), Hex("05"));
}
