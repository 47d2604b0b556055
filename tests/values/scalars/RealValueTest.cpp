#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <typeinfo>

#include "DoubleValue.h"
#include "RealValue.h"
#include "ValueTags.h"

using test::Compared;
using test::Written;

namespace {

float ReadReal(std::string_view hex) {
    return test::Read<RealValue, RealValueParser>(hex).GetValue();
}

}  // namespace

TEST(RealValue, OfOneWritesFourOctets) {
    EXPECT_EQ(Written(RealValue(1.0F)), "44 3F 80 00 00");
}

TEST(RealValueParser, ReadsFourOctetsOfAnyTag) {
    EXPECT_EQ(ReadReal("44 C0 20 00 00"), -2.5F);
    EXPECT_EQ(ReadReal("64 3F 80 00 00"), 1.0F);
    EXPECT_EQ(ReadReal("44 7F 80 00 00"), std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(ReadReal("44 7F C0 00 00")));
}

TEST(RealValueParser, ReadsFewerOctetsAsTheLowEndOfThePattern) {
    EXPECT_EQ(ReadReal("40"), 0.0F);
    EXPECT_EQ(ReadReal("41 01"), std::numeric_limits<float>::denorm_min());
}

TEST(RealValue, ComparedWithADoubleThrowsBadCast) {
    EXPECT_THROW(Compared(RealValue(1), DoubleValue(1)), std::bad_cast);
}

TEST(RealValue, ComparesByTheSignOfTheDifference) {
    EXPECT_EQ(Compared(RealValue(1.5F), RealValue(1.25F)), 1);
    EXPECT_EQ(Compared(RealValue(-1), RealValue(1)), -1);
    EXPECT_EQ(Compared(RealValue(2), RealValue(2)), 0);
}

TEST(RealValue, ComparesAsEqualIfTheDifferenceIsNotANumber) {
    EXPECT_EQ(Compared(RealValue(NAN), RealValue(1)), 0);
    EXPECT_EQ(Compared(RealValue(1), RealValue(NAN)), 0);
    EXPECT_EQ(Compared(RealValue(INFINITY), RealValue(INFINITY)), 0);
}
