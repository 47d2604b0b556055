#include <gtest/gtest.h>

#include <typeinfo>

#include "BinaryValue.h"
#include "BooleanValue.h"
#include "ValueTags.h"

using test::Compared;
using test::ParseFailure;
using test::Written;

namespace {

bool ReadBoolean(std::string_view hex) {
    return test::Read<BooleanValue, BooleanValueParser>(hex).GetValue();
}

}  // namespace

TEST(BooleanValue, WritesTrueAndFalseAsOneOctetWithoutData) {
    EXPECT_EQ(Written(BooleanValue(true)), "11");
    EXPECT_EQ(Written(BooleanValue(false)), "10");
    EXPECT_EQ(Written(BooleanValue()), "10");
}

TEST(BooleanValueParser, RefusesAnotherTagNumberAndAnotherLengthField) {
    EXPECT_EQ(ParseFailure<BooleanValueParser>("21 01"), "tag number does not meet expectations");
    EXPECT_EQ(ParseFailure<BooleanValueParser>("12"), "bad value in field VallenType. expect 0 or 1");
    // The number is checked first.
    EXPECT_EQ(ParseFailure<BooleanValueParser>("22 00 00"), "tag number does not meet expectations");
}

TEST(BooleanValueParser, ReadsTheLengthFieldOfAnyClass) {
    EXPECT_TRUE(ReadBoolean("11"));
    EXPECT_FALSE(ReadBoolean("10"));
    EXPECT_TRUE(ReadBoolean("19 00"));
}

TEST(BooleanValue, ComparesFalseAsLessThanTrue) {
    EXPECT_EQ(Compared(BooleanValue(false), BooleanValue(true)), -1);
    EXPECT_EQ(Compared(BooleanValue(true), BooleanValue(false)), 1);
    EXPECT_EQ(Compared(BooleanValue(true), BooleanValue(true)), 0);
    EXPECT_EQ(Compared(BooleanValue(false), BooleanValue(false)), 0);
    EXPECT_THROW(Compared(BooleanValue(true), BinaryValue(BACnetBinaryPV::Active)), std::bad_cast);
}
