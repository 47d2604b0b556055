#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <typeinfo>

#include "BinaryValue.h"
#include "BooleanValue.h"
#include "DoubleValue.h"
#include "EnumValue.h"
#include "Exceptions.h"
#include "IntValue.h"
#include "RealValue.h"
#include "UintValue.h"
#include "ValueTags.h"

using test::Failure;
using test::Hex;
using test::ParseOctets;
using test::Read;
using test::Written;

namespace {

constexpr unsigned long long twoTo32 = 1ULL << 32;

BinaryValue Binary(int value) {
    return BinaryValue(static_cast<BACnetBinaryPV>(value));
}

int Compared(CPropertyValue const& left, CPropertyValue&& right) {
    return left.Compare(right);
}

}  // namespace

TEST(BooleanValue, WritesTrueAndFalseAsOneOctetWithoutData) {
    EXPECT_EQ(Written(BooleanValue(true)), "11");
    EXPECT_EQ(Written(BooleanValue(false)), "10");
    EXPECT_EQ(Written(BooleanValue()), "10");
}

TEST(BinaryValue, WritesOneEnumeratedOctet) {
    EXPECT_EQ(Written(Binary(1)), "91 01");
    EXPECT_EQ(Written(Binary(0)), "91 00");
    EXPECT_EQ(Written(Binary(0x1FE)), "91 FE");
}

TEST(EnumValue, WritesAlwaysFourOctets) {
    EXPECT_EQ(Written(EnumValue(5)), "94 00 00 00 05");
    EXPECT_EQ(Written(EnumValue(0xFEDCBA98)), "94 FE DC BA 98");
}

TEST(UintValue, WritesWithoutLeadingZerosAndWithTheExtendedLengthFromFiveOctets) {
    EXPECT_EQ(Written(UintValue(0)), "21 00");
    EXPECT_EQ(Written(UintValue(256)), "22 01 00");
    EXPECT_EQ(Written(UintValue(0xFFFFFFFF)), "24 FF FF FF FF");
    EXPECT_EQ(Written(UintValue(1ULL << 40)), "25 06 01 00 00 00 00 00");

    Tag const tag = UintValue(1ULL << 40).ToApplicationTag();
    EXPECT_EQ(tag.GetValLenType(), 5);
    EXPECT_EQ(tag.GetAdditionalLength(), 6);
    EXPECT_FALSE(tag.GetIsClass());
    EXPECT_EQ(Written(UintValue()), "21 00");
}

TEST(IntValue, WritesMinusOneInEightOctetsAnd200InOne) {
    EXPECT_EQ(Written(IntValue(-1)), "35 08 FF FF FF FF FF FF FF FF");
    EXPECT_EQ(Written(IntValue(200)), "31 C8");
    EXPECT_EQ(Written(IntValue()), "31 00");
}

TEST(RealValue, WritesFourOctets) {
    EXPECT_EQ(Written(RealValue(1.0F)), "44 3F 80 00 00");
}

TEST(DoubleValue, WritesEightOctetsWithTheExtendedLength) {
    EXPECT_EQ(Written(DoubleValue(1.0)), "55 08 3F F0 00 00 00 00 00 00");
    EXPECT_EQ(Written(DoubleValue()), "55 08 00 00 00 00 00 00 00 00");
}

TEST(IntValueParser, ReadsWithoutSignExtension) {
    EXPECT_EQ((Read<IntValue, IntValueParser>("31 FF").GetValue()), 255);
    EXPECT_EQ((Read<IntValue, IntValueParser>("32 FF 38").GetValue()), 65336);
    EXPECT_EQ((Read<IntValue, IntValueParser>("35 08 FF FF FF FF FF FF FF FF").GetValue()), -1);
}

TEST(UintAndEnumValueParser, GiveZeroForEmptyData) {
    EXPECT_EQ((Read<UintValue, UintValueParser>("20").GetValue()), 0U);
    EXPECT_EQ((Read<EnumValue, EnumValueParser>("90").GetValue()), 0U);
    EXPECT_EQ((Read<IntValue, IntValueParser>("30").GetValue()), 0);
    // A Boolean never has data, so it reads as 0 where a number is awaited.
    EXPECT_EQ((Read<UintValue, UintValueParser>("11").GetValue()), 0U);
}

TEST(BooleanValueParser, RefusesAnotherTagNumberAndAnotherLengthField) {
    auto const parse = [](char const* hex) {
        return Failure<ParseException>([hex] { ParseOctets<BooleanValueParser>(Hex(hex)); });
    };
    EXPECT_EQ(parse("21 01"), "tag number does not meet expectations");
    EXPECT_EQ(parse("12"), "bad value in field VallenType. expect 0 or 1");
}

TEST(BooleanValueParser, ReadsTheLengthFieldOfAnyClass) {
    EXPECT_TRUE((Read<BooleanValue, BooleanValueParser>("11").GetValue()));
    EXPECT_FALSE((Read<BooleanValue, BooleanValueParser>("10").GetValue()));
    EXPECT_TRUE((Read<BooleanValue, BooleanValueParser>("19 00").GetValue()));
}

TEST(BinaryValueParser, RefusesTwoOctetsAndReadsOneUnchanged) {
    EXPECT_THROW(ParseOctets<BinaryValueParser>(Hex("92 00 01")), ArgumentOutOfRangeException);
    EXPECT_THROW(ParseOctets<BinaryValueParser>(Hex("90")), ArgumentOutOfRangeException);
    EXPECT_EQ((Read<BinaryValue, BinaryValueParser>("91 01").GetValue()), BACnetBinaryPV::Active);
    EXPECT_EQ(static_cast<int>(Read<BinaryValue, BinaryValueParser>("91 FF").GetValue()), 255);
}

TEST(ScalarCompare, OfARealWithADoubleThrowsBadCast) {
    EXPECT_THROW(Compared(RealValue(1), DoubleValue(1)), std::bad_cast);
    EXPECT_THROW(Compared(DoubleValue(1), RealValue(1)), std::bad_cast);
    EXPECT_THROW(Compared(IntValue(1), UintValue(1)), std::bad_cast);
    EXPECT_THROW(Compared(UintValue(1), IntValue(1)), std::bad_cast);
    EXPECT_THROW(Compared(Binary(1), EnumValue(1)), std::bad_cast);
    EXPECT_THROW(Compared(EnumValue(1), Binary(1)), std::bad_cast);
    EXPECT_THROW(Compared(BooleanValue(true), Binary(1)), std::bad_cast);
}

TEST(ScalarCompare, OfUintsThatAreEqualInTheirLowHalvesGivesZero) {
    EXPECT_EQ(Compared(UintValue(7), UintValue(7 + 5 * twoTo32)), 0);
    EXPECT_EQ(Compared(UintValue(9), UintValue(7 + twoTo32)), 2);
    EXPECT_EQ(Compared(IntValue(-1), IntValue(0xFFFFFFFF)), 0);
    EXPECT_EQ(Compared(IntValue(-5), IntValue(5)), -10);
    EXPECT_EQ(Compared(IntValue(0), IntValue(std::numeric_limits<long long>::min())), 0);
}

TEST(ScalarCompare, OrdersBinariesBooleansAndEnumerations) {
    EXPECT_EQ(Compared(Binary(7), Binary(3)), 1);
    EXPECT_EQ(Compared(Binary(3), Binary(3)), 0);
    EXPECT_EQ(Compared(Binary(-1), Binary(3)), -1);
    EXPECT_EQ(Compared(BooleanValue(false), BooleanValue(true)), -1);
    EXPECT_EQ(Compared(BooleanValue(true), BooleanValue(false)), 1);
    EXPECT_EQ(Compared(BooleanValue(true), BooleanValue(true)), 0);
    EXPECT_EQ(Compared(EnumValue(3), EnumValue(5)), -2);
    EXPECT_EQ(Compared(EnumValue(0), EnumValue(0xFFFFFFFF)), 1);
}

TEST(ScalarCompare, OfFloatingPointTakesADifferenceThatIsNoNumberForNone) {
    EXPECT_EQ(Compared(RealValue(1.5F), RealValue(1.25F)), 1);
    EXPECT_EQ(Compared(RealValue(-1), RealValue(1)), -1);
    EXPECT_EQ(Compared(RealValue(NAN), RealValue(1)), 0);
    EXPECT_EQ(Compared(DoubleValue(1e300), DoubleValue(-1e300)), 1);
    EXPECT_EQ(Compared(DoubleValue(0.5), DoubleValue(0.5)), 0);
    EXPECT_EQ(Compared(DoubleValue(INFINITY), DoubleValue(INFINITY)), 0);
}

TEST(ScalarParsers, ReadTheFirstTagOnlyWhateverItsNumberAndClass) {
    EXPECT_EQ((Read<UintValue, UintValueParser>("22 01 02 21 05").GetValue()), 258U);
    EXPECT_EQ((Read<UintValue, UintValueParser>("09 07").GetValue()), 7U);
    EXPECT_EQ((Read<EnumValue, EnumValueParser>("82 04 F0").GetValue()), 1264U);
    EXPECT_EQ((Read<EnumValue, EnumValueParser>("25 05 01 00 00 00 02").GetValue()), 2U);
    EXPECT_EQ((Read<RealValue, RealValueParser>("64 3F 80 00 00").GetValue()), 1.0F);
}

TEST(ScalarParsers, ReadShortFloatingPointAsTheLowEndOfThePattern) {
    EXPECT_EQ((Read<RealValue, RealValueParser>("40").GetValue()), 0.0F);
    EXPECT_EQ((Read<RealValue, RealValueParser>("41 01").GetValue()),
              std::numeric_limits<float>::denorm_min());
    EXPECT_EQ((Read<DoubleValue, DoubleValueParser>("44 3F 80 00 00").GetValue()),
              std::ldexp(0x3F800000, -1074));
}

TEST(ScalarParsers, ReadDataCutAtAnyLengthAsTheNumberOfWhatIsLeft) {
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

TEST(ScalarParsers, RefuseMoreOctetsThanTheTypeHas) {
    char const* const nine = "25 09 00 00 00 00 00 00 00 00 01";
    EXPECT_THROW(ParseOctets<UintValueParser>(Hex(nine)), ParseException);
    EXPECT_THROW(ParseOctets<IntValueParser>(Hex(nine)), ParseException);
    EXPECT_THROW(ParseOctets<EnumValueParser>(Hex(nine)), ParseException);
    EXPECT_THROW(ParseOctets<DoubleValueParser>(Hex(nine)), ParseException);
    EXPECT_THROW(ParseOctets<RealValueParser>(Hex("45 05 00 3F 80 00 00")), ParseException);
}

TEST(ScalarParsers, RefuseAWrapperWithoutTagsAndAConstructedFirstTag) {
    for (char const* const hex : {"", "1E 21 01 1F"}) {
        EXPECT_THROW(ParseOctets<BinaryValueParser>(Hex(hex)), ParseException);
        EXPECT_THROW(ParseOctets<BooleanValueParser>(Hex(hex)), ParseException);
        EXPECT_THROW(ParseOctets<EnumValueParser>(Hex(hex)), ParseException);
        EXPECT_THROW(ParseOctets<IntValueParser>(Hex(hex)), ParseException);
        EXPECT_THROW(ParseOctets<UintValueParser>(Hex(hex)), ParseException);
        EXPECT_THROW(ParseOctets<RealValueParser>(Hex(hex)), ParseException);
        EXPECT_THROW(ParseOctets<DoubleValueParser>(Hex(hex)), ParseException);
    }
}

TEST(ScalarValues, SurviveWritingAndReading) {
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

TEST(CPropertyValue, GivesOneTagNoConstructedOnesAndTheValueThatWasSet) {
    UintValue value(3);
    value.SetValue(260);
    EXPECT_EQ(value.GetValue(), 260U);
    ASSERT_EQ(value.ToApplicationTags().size(), 1U);
    EXPECT_EQ(test::ToHex(value.ToApplicationTags()[0].GetBytes()), "22 01 04");
    EXPECT_TRUE(value.ToApplicationComplexTags().empty());
}

TEST(CPropertyValue, ComparesEveryPairAsEqualUnlessAClassSaysOtherwise) {
    class PlainValue : public CPropertyValue {
    public:
        Tag ToApplicationTag() const override { return Tag(); }
    };
    EXPECT_EQ(Compared(PlainValue(), UintValue(3)), 0);
}
