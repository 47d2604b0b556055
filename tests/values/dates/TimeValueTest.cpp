#include <gtest/gtest.h>

#include <typeinfo>

#include "DateValue.h"
#include "TimeValue.h"
#include "ValueTags.h"

using test::Compared;
using test::ParseFailure;
using test::Written;

TEST(TimeValue, WritesItsFourOctetsAndIsMidnightByDefault) {
    EXPECT_EQ(Written(TimeValue(12, 30, 15, 99)), "B4 0C 1E 0F 63");
    EXPECT_EQ(Written(TimeValue(Time(12, 30, 15, 99))), "B4 0C 1E 0F 63");
    EXPECT_EQ(Written(TimeValue()), "B4 00 00 00 00");
}

TEST(TimeValue, ComparesAsEqualToAnyOther) {
    TimeValue const morning(Time(6, 30, 0, 7));
    EXPECT_EQ(Compared(morning, TimeValue(Time(18, 0, 0, 0))), 0);
    EXPECT_EQ(Compared(TimeValue(Time(18, 0, 0, 0)), TimeValue(morning)), 0);
    EXPECT_EQ(Compared(morning, TimeValue()), 0);
}

TEST(TimeValue, ComparedWithADateThrowsBadCast) {
    EXPECT_THROW(Compared(TimeValue(), DateValue()), std::bad_cast);
}

TEST(TimeValueParser, ReadsTheFourOctetsInOrder) {
    EXPECT_EQ(test::Text(test::Read<TimeValue, TimeValueParser>("B4 0C 1E 0F 63").GetValue()), "12 30 15 99");
    EXPECT_EQ(test::Text(test::Read<TimeValue, TimeValueParser>("B4 FF 63 80 FF").GetValue()),
              "255 99 128 255");
}

TEST(TimeValueParser, ReadsOneTagAsAValueOrAsATime) {
    Tag const tag = Tag::FromOctets(11, false, test::Hex("0C 1E 0F 63"));
    EXPECT_EQ(test::Text(TimeValueParser().GetValue(tag)->GetValue()), "12 30 15 99");
    EXPECT_EQ(test::Text(TimeValueParser::GetTime(tag)), "12 30 15 99");
    EXPECT_THROW(TimeValueParser::GetTime(Tag::FromOctets(12, false, tag.data)), ParseException);
}

TEST(TimeValueParser, OnTwoTagsNamesTheTagNumber) {
    EXPECT_EQ(ParseFailure<TimeValueParser>("B4 01 02 03 04 B4 01 02 03 04"),
              "tag number does not meet expectations");
}

TEST(TimeValueParser, OnNoTagNamesTheTagNumber) {
    EXPECT_EQ(ParseFailure<TimeValueParser>(""), "tag number does not meet expectations");
}

TEST(TimeValueParser, RefusesAnotherTagNumberAfterTheLength) {
    EXPECT_EQ(ParseFailure<TimeValueParser>("A4 7C 03 0F 05"),
              "tag type does not meet expectations : Time{11}");
    EXPECT_EQ(ParseFailure<TimeValueParser>("43 7C 03 0F"), "tag lenght does not meet expectations : 4");
}

TEST(TimeValueParser, RefusesEveryLengthButFour) {
    for (std::size_t length = 0; length < 8; ++length) {
        std::string const hex = test::ToHex(Tag::FromOctets(11, false, test::Octets(length)).GetBytes());
        EXPECT_EQ(ParseFailure<TimeValueParser>(hex),
                  length == 4 ? "no failure" : "tag lenght does not meet expectations : 4")
            << length;
    }
}
