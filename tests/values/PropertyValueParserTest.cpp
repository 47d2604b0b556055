#include <gtest/gtest.h>

#include <cstddef>
#include <limits>

#include "BinaryValue.h"
#include "BitStringValue.h"
#include "BooleanValue.h"
#include "CharacterStringValue.h"
#include "DateTimeValue.h"
#include "DoubleValue.h"
#include "EnumValue.h"
#include "IntValue.h"
#include "OctetStringValue.h"
#include "RealValue.h"
#include "UintValue.h"
#include "ValueTags.h"

// Common properties of the parsers of several classes.

using test::Hex;
using test::ParseOctets;
using test::Read;
using test::Written;

template <class Parser>
class EveryParser : public testing::Test {};

using Parsers =
    testing::Types<BinaryValueParser, BooleanValueParser, EnumValueParser, IntValueParser, UintValueParser,
                   RealValueParser, DoubleValueParser, BitStringValueParser, CharacterStringValueParser,
                   OctetStringValueParser, DateValueParser, TimeValueParser, DateTimeValueParser>;
TYPED_TEST_SUITE(EveryParser, Parsers, );

TYPED_TEST(EveryParser, RefusesAWrapperWithoutTags) {
    EXPECT_THROW(ParseOctets<TypeParam>({}), ParseException);
}

TYPED_TEST(EveryParser, RefusesAConstructedTag) {
    EXPECT_THROW(ParseOctets<TypeParam>(Hex("1E 21 01 1F")), ParseException);
    EXPECT_THROW(ParseOctets<TypeParam>(Hex("1E 1F 1E 1F")), ParseException);
}

TEST(IntegerParsers, ReadDataCutAtAnyLengthAsTheNumberOfWhatIsLeft) {
    test::Octets const octets = Hex("01 02 03 04 05 06 07 08");
    unsigned long long expected = 0;
    for (std::size_t length = 0; length <= octets.size(); ++length) {
        test::Octets const cut(octets.begin(), octets.begin() + static_cast<std::ptrdiff_t>(length));
        std::string const hex = test::ToHex(Tag::FromOctets(2, false, cut).GetBytes());
        EXPECT_EQ((Read<UintValue, UintValueParser>(hex).GetValue()), expected);
        EXPECT_EQ((Read<IntValue, IntValueParser>(hex).GetValue()), static_cast<long long>(expected));
        EXPECT_EQ((Read<EnumValue, EnumValueParser>(hex).GetValue()), static_cast<unsigned>(expected));
        expected = expected << 8 | (length + 1);
    }
}

TEST(NumberParsers, RefuseMoreOctetsThanTheTypeHas) {
    test::Octets const nine = Hex("25 09 00 00 00 00 00 00 00 00 01");
    EXPECT_THROW(ParseOctets<UintValueParser>(nine), ParseException);
    EXPECT_THROW(ParseOctets<IntValueParser>(nine), ParseException);
    EXPECT_THROW(ParseOctets<EnumValueParser>(nine), ParseException);
    EXPECT_THROW(ParseOctets<DoubleValueParser>(nine), ParseException);
    EXPECT_THROW(ParseOctets<RealValueParser>(Hex("45 05 00 3F 80 00 00")), ParseException);
}

TEST(NumberParsers, GiveBackWhatTheValuesWrite) {
    for (long long const value :
         {0LL, 1LL, -1LL, 127LL, 200LL, -129LL, 1LL << 40, std::numeric_limits<long long>::min(),
          std::numeric_limits<long long>::max()}) {
        EXPECT_EQ((Read<IntValue, IntValueParser>(Written(IntValue(value))).GetValue()), value);
        auto const unsignedValue = static_cast<unsigned long long>(value);
        EXPECT_EQ((Read<UintValue, UintValueParser>(Written(UintValue(unsignedValue))).GetValue()),
                  unsignedValue);
        auto const enumerated = static_cast<unsigned>(value);
        EXPECT_EQ((Read<EnumValue, EnumValueParser>(Written(EnumValue(enumerated))).GetValue()), enumerated);
        double const real = static_cast<double>(value) / 3;
        EXPECT_EQ((Read<DoubleValue, DoubleValueParser>(Written(DoubleValue(real))).GetValue()), real);
        auto const single = static_cast<float>(real);
        EXPECT_EQ((Read<RealValue, RealValueParser>(Written(RealValue(single))).GetValue()), single);
    }
}
