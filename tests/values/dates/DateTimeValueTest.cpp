#include <gtest/gtest.h>

#include <typeinfo>

#include "DateTimeValue.h"
#include "ValueTags.h"

using test::Compared;
using test::ParseFailure;
using test::Written;

namespace {

DateTimeValue const Afternoon(Date(124, 3, 15, 255), Time(12, 30, 15, 99));

}  // namespace

TEST(DateTimeValue, WritesTwoTags) {
    EXPECT_EQ(Written(Afternoon), "A4 7C 03 0F FF B4 0C 1E 0F 63");
    EXPECT_EQ(Written(DateTimeValue(Afternoon.GetValue())), "A4 7C 03 0F FF B4 0C 1E 0F 63");
    EXPECT_EQ(Afternoon.ToApplicationTags().size(), 2U);
}

TEST(DateTimeValue, IsMidnightOfAnUnspecifiedDateByDefault) {
    EXPECT_EQ(Written(DateTimeValue()), "A4 FF FF FF FF B4 00 00 00 00");
}

TEST(DateTimeValue, IsNeverOneTag) {
    EXPECT_EQ(test::Failure<std::runtime_error>([] { Afternoon.ToApplicationTag(); }), "Not emplemented");
}

TEST(DateTimeValue, ComparesAsEqualToAnyOther) {
    EXPECT_EQ(Compared(Afternoon, DateTimeValue(Date(100, 1, 1, 255), Time(6, 30, 0, 7))), 0);
    EXPECT_EQ(Compared(DateTimeValue(), DateTimeValue(Afternoon)), 0);
}

TEST(DateTimeValue, ComparedWithADateThrowsBadCast) {
    EXPECT_THROW(Compared(Afternoon, DateValue()), std::bad_cast);
}

TEST(DateTimeValueParser, ReadsADateAndThenATime) {
    auto const value =
        test::Read<DateTimeValue, DateTimeValueParser>("A4 7C 03 0F 05 B4 0C 1E 0F 63").GetValue();
    EXPECT_EQ(test::Text(value.date), "124 3 15 5");
    EXPECT_EQ(test::Text(value.time), "12 30 15 99");
}

TEST(DateTimeValueParser, RefusesTheTwoInAnotherOrder) {
    EXPECT_EQ(ParseFailure<DateTimeValueParser>("B4 0C 1E 0F 63 A4 7C 03 0F 05"),
              "tag type does not meet expectations : Date{10}");
    EXPECT_EQ(ParseFailure<DateTimeValueParser>("A4 7C 03 0F 05 A4 7C 03 0F 05"),
              "tag type does not meet expectations : Time{11}");
}

TEST(DateTimeValueParser, RefusesAnyNumberOfTagsButTwo) {
    for (char const* const hex : {"", "A4 7C 03 0F 05", "A4 7C 03 0F 05 B4 00 00 00 00 10"}) {
        EXPECT_EQ(ParseFailure<DateTimeValueParser>(hex), "tag quantity does not meet expectations") << hex;
    }
}

TEST(DateTimeValueParser, RefusesAConstructedTagForATime) {
    EXPECT_THROW(test::ParseOctets<DateTimeValueParser>(test::Hex("A4 7C 03 0F 05 1E 1F")), ParseException);
}
