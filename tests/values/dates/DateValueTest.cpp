#include <gtest/gtest.h>

#include <typeinfo>

#include "DateValue.h"
#include "TimeValue.h"
#include "ValueTags.h"

using test::Compared;
using test::ParseFailure;
using test::Written;

TEST(DateValue, WritesItsFourOctetsAndIsUnspecifiedByDefault) {
    EXPECT_EQ(Written(DateValue(124, 3, 15, 5)), "A4 7C 03 0F 05");
    EXPECT_EQ(Written(DateValue(Date(124, 3, 15, 5))), "A4 7C 03 0F 05");
    EXPECT_EQ(Written(DateValue()), "A4 FF FF FF FF");
}

TEST(DateValue, ComparesAsEqualToAnyOther) {
    DateValue const early(Date(100, 1, 1, 255));
    EXPECT_EQ(Compared(early, DateValue(Date(124, 3, 15, 255))), 0);
    EXPECT_EQ(Compared(DateValue(Date(124, 3, 15, 255)), DateValue(early)), 0);
    EXPECT_EQ(Compared(early, DateValue()), 0);
}

TEST(DateValue, ComparedWithATimeThrowsBadCast) {
    EXPECT_THROW(Compared(DateValue(), TimeValue()), std::bad_cast);
}

TEST(DateValueParser, ReadsTheFourOctetsInOrder) {
    EXPECT_EQ(test::Text(test::Read<DateValue, DateValueParser>("A4 7C 03 0F 05").GetValue()), "124 3 15 5");
    EXPECT_EQ(test::Text(test::Read<DateValue, DateValueParser>("A4 FF 0D 20 FF").GetValue()),
              "255 13 32 255");
}

TEST(DateValueParser, ReadsOneTagAsAValueOrAsADate) {
    Tag const tag = Tag::FromOctets(10, false, test::Hex("7C 03 0F 05"));
    EXPECT_EQ(test::Text(DateValueParser().GetValue(tag)->GetValue()), "124 3 15 5");
    EXPECT_EQ(test::Text(DateValueParser::GetDate(tag)), "124 3 15 5");
    EXPECT_THROW(DateValueParser::GetDate(Tag::FromOctets(9, false, tag.data)), ParseException);
}

TEST(DateValueParser, RefusesThreeOctetsOfTagNumber4ForTheirLength) {
    EXPECT_EQ(ParseFailure<DateValueParser>("43 7C 03 0F"), "tag lenght does not meet expectations : 4");
}

TEST(DateValueParser, RefusesAnotherTagNumber) {
    EXPECT_EQ(ParseFailure<DateValueParser>("44 7C 03 0F 05"),
              "tag type does not meet expectations : Date{10}");
}

TEST(DateValueParser, RefusesAnyNumberOfTagsButOne) {
    EXPECT_EQ(ParseFailure<DateValueParser>(""), "tag quantity does not meet expectations");
    EXPECT_EQ(ParseFailure<DateValueParser>("A4 7C 03 0F 05 A4 7C 03 0F 05"),
              "tag quantity does not meet expectations");
}

TEST(DateValueParser, RefusesEveryLengthButFour) {
    for (std::size_t length = 0; length < 8; ++length) {
        std::string const hex = test::ToHex(Tag::FromOctets(10, false, test::Octets(length)).GetBytes());
        EXPECT_EQ(ParseFailure<DateValueParser>(hex),
                  length == 4 ? "no failure" : "tag lenght does not meet expectations : 4")
            << length;
    }
}
