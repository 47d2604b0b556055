#include <gtest/gtest.h>

#include <cmath>
#include <typeinfo>

#include "DoubleValue.h"
#include "RealValue.h"
#include "ValueTags.h"

using test::Compared;
using test::Written;

namespace {

double ReadDouble(std::string_view hex) {
    return test::Read<DoubleValue, DoubleValueParser>(hex).GetValue();
}

}  // namespace

TEST(DoubleValue, OfOneWritesEightOctetsWithTheExtendedLength) {
    EXPECT_EQ(Written(DoubleValue(1.0)), "55 08 3F F0 00 00 00 00 00 00");
    EXPECT_EQ(DoubleValue(1.0).ToApplicationTag().GetAdditionalLength(), 8);
}

TEST(DoubleValue, IsZeroByDefault) {
    EXPECT_EQ(Written(DoubleValue()), "55 08 00 00 00 00 00 00 00 00");
}

TEST(DoubleValueParser, ReadsEightOctets) {
    EXPECT_EQ(ReadDouble("55 08 C0 04 00 00 00 00 00 00"), -2.5);
}

TEST(DoubleValueParser, MisreadsARealAsTheLowEndOfThePattern) {
    EXPECT_EQ(ReadDouble("44 3F 80 00 00"), std::ldexp(0x3F800000, -1074));
    EXPECT_EQ(ReadDouble("50"), 0.0);
}

TEST(DoubleValue, ComparesByTheSignOfTheDifference) {
    EXPECT_EQ(Compared(DoubleValue(1e300), DoubleValue(-1e300)), 1);
    EXPECT_EQ(Compared(DoubleValue(0.25), DoubleValue(0.5)), -1);
    EXPECT_EQ(Compared(DoubleValue(0.5), DoubleValue(0.5)), 0);
    EXPECT_THROW(Compared(DoubleValue(1), RealValue(1)), std::bad_cast);
}

TEST(DoubleValue, ComparesAsEqualIfTheDifferenceIsNotANumber) {
    EXPECT_EQ(Compared(DoubleValue(INFINITY), DoubleValue(INFINITY)), 0);
    EXPECT_EQ(Compared(DoubleValue(NAN), DoubleValue(1)), 0);
}
