#include <gtest/gtest.h>

#include <typeinfo>

#include "DateTimeValue.h"
#include "Exceptions.h"
#include "ValueTags.h"

using test::Failure;
using test::Hex;
using test::ParseOctets;
using test::Read;
using test::Written;

namespace {

constexpr unsigned long long unitsPerDay = 864000000000ULL;
constexpr unsigned long long daysTo15March2024 = 154571;  // from 1 January 1601
constexpr std::uint8_t any = 255;

// The month tables must be there for the initialisers of other files.
unsigned long long const fileTimeMadeAtLoad = Date(124, 3, 15, any).ToFileTime();

std::string Text(Date const& date) {
    return std::to_string(date.year) + " " + std::to_string(date.month) + " " + std::to_string(date.day) +
           " " + std::to_string(date.weekday);
}

std::string Text(Time const& time) {
    return std::to_string(time.hour) + " " + std::to_string(time.minute) + " " + std::to_string(time.second) +
           " " + std::to_string(time.hundredths);
}

// The date that is made of a number of days since 1 January 1601.
std::string DateOfDays(unsigned long long days) {
    return Text(Date(days * unitsPerDay));
}

template <class Parser>
std::string ParseFailure(char const* hex) {
    return Failure<ParseException>([hex] { ParseOctets<Parser>(Hex(hex)); });
}

}  // namespace

TEST(Date, GivesTheFileTimeOfItsMidnightWhateverTheWeekday) {
    EXPECT_EQ(Date(124, 3, 15, any).ToFileTime(), daysTo15March2024 * unitsPerDay);
    EXPECT_EQ(Date(124, 3, 15, 5).ToFileTime(), daysTo15March2024 * unitsPerDay);
    EXPECT_EQ(Date(0, 1, 1, 1).ToFileTime(), 109207 * unitsPerDay);
    EXPECT_EQ(fileTimeMadeAtLoad, daysTo15March2024 * unitsPerDay);
}

TEST(Date, OfAllUnspecifiedGivesZero) {
    EXPECT_EQ(Date(any, any, any, any).ToFileTime(), 0U);
    EXPECT_EQ(Date().ToFileTime(), 0U);
}

TEST(Date, OfUnspecifiedYearAddsTheMonthsAndDaysOnly) {
    EXPECT_EQ(Date(any, 2, any, any).ToFileTime(), 31 * unitsPerDay);
    EXPECT_EQ(Date(any, 2, 10, any).ToFileTime(), 40 * unitsPerDay);
    EXPECT_EQ(Date(any, 3, 1, any).ToFileTime(), 59 * unitsPerDay);  // 2155 is an ordinary year
}

TEST(Date, CountsMonthsUpToTheEndOfTheTableAndNoFurther) {
    EXPECT_EQ(Date(any, 13, any, any).ToFileTime(), 365 * unitsPerDay);
    EXPECT_EQ(Date(any, 254, any, any).ToFileTime(), 365 * unitsPerDay);
    EXPECT_EQ(Date(any, 0, any, any).ToFileTime(), 0U);
    EXPECT_EQ(Date(any, 2, 0, any).ToFileTime(), 30 * unitsPerDay);
}

TEST(Date, KnowsLeapYears) {
    EXPECT_TRUE(Date::IsLeapYear(2024));
    EXPECT_TRUE(Date::IsLeapYear(2000));
    EXPECT_FALSE(Date::IsLeapYear(1900));
    EXPECT_FALSE(Date::IsLeapYear(2023));
    EXPECT_EQ(Date::originalYearMonthDays[2], 28);
    EXPECT_EQ(Date::laepYearMonthDays[2], 29);
    EXPECT_EQ(Date::laepYearMonthDays.size(), 13U);
}

TEST(Date, OfAFileTimeUpTo1900HasNoYear) {
    // Day 0 of the year is 108842 days after 1601; before it the month is 0 too.
    EXPECT_EQ(DateOfDays(0), "255 0 " + std::to_string((31 - 108842) & 255) + " 255");
    EXPECT_EQ(DateOfDays(108842), "255 0 31 255");
    EXPECT_EQ(DateOfDays(108843), "255 1 254 255");  // 1 - 31 + 28, cut to an octet
    EXPECT_EQ(DateOfDays(109207), "255 12 0 255");
}

TEST(Date, OfAFileTimeIsCountedByTheNextYearAndTheNextMonth) {
    // 1 January 2024 is the day 154497. With the length of 2025 taken off, 15 March is the day 73 of the
    // year, and 73 - (31 + 29 + 31) + 30 is 12.
    EXPECT_EQ(DateOfDays(daysTo15March2024), "124 3 12 255");
    EXPECT_EQ(DateOfDays(109208), "0 1 254 255");
}

TEST(Date, OfAFileTimeInDecemberOrBehindItReadsNoFurtherMonth) {
    unsigned long long const lastDayOf2022 = Date(122, 12, 31, any).ToFileTime() / unitsPerDay;
    // The sum of the years is reached on the day behind, so the last day has the number 364.
    EXPECT_EQ(DateOfDays(lastDayOf2022), "122 12 255 255");
    // 1 January 2024 is still counted in 2023 by the length of 2024: the 366th day of an ordinary year.
    unsigned long long const firstDayOf2024 = Date(124, 1, 1, any).ToFileTime() / unitsPerDay;
    EXPECT_EQ(DateOfDays(firstDayOf2024), "123 12 1 255");
}

TEST(Date, OfAnyFileTimeIsMadeWithinBounds) {
    for (unsigned long long days = 109207; days < 210000; ++days) {
        Date const date(days * unitsPerDay);
        ASSERT_LE(date.month, 12) << days;
        ASSERT_EQ(date.weekday, any);
    }
    Date const last(~0ULL);
    EXPECT_LE(last.month, 12);
}

TEST(Time, OfAllUnspecifiedGivesZero) {
    EXPECT_EQ(Time(any, any, any, any).ToFileTime(), 0U);
    EXPECT_EQ(Time(any, 1, any, any).ToFileTime(), 600000000U);
}

TEST(Time, CountsHundredthsAsHundredUnits) {
    EXPECT_EQ(Time(1, 2, 3, 4).ToFileTime(), 36000000000ULL + 1200000000ULL + 30000000ULL + 400000ULL);
    EXPECT_EQ(Time().ToFileTime(), 0U);
}

TEST(Time, OfAFileTimeIsItsInverseAndCutsTheHour) {
    EXPECT_EQ(Text(Time(Time(23, 59, 58, 99).ToFileTime())), "23 59 58 99");
    EXPECT_EQ(Text(Time(300 * 36000000000ULL)), "44 0 0 0");
}

TEST(DateTime, IsTheSumOfItsPartsAndIsMadeOfTheWholeFileTime) {
    DateTime const dateTime(Date(124, 3, 15, any), Time(1, 0, 0, 0));
    unsigned long long const fileTime = daysTo15March2024 * unitsPerDay + 36000000000ULL;
    EXPECT_EQ(dateTime.ToFileTime(), fileTime);
    EXPECT_EQ(Text(DateTime(fileTime).date), Text(Date(fileTime)));
    EXPECT_EQ(Text(DateTime(fileTime).time), Text(Time(fileTime)));
    EXPECT_EQ(DateTime(fileTime).time.hour, static_cast<std::uint8_t>(daysTo15March2024 * 24 + 1));
}

TEST(DateValueParser, RefusesThreeOctetsForTheirLengthAheadOfTheNumber) {
    EXPECT_EQ(ParseFailure<DateValueParser>("43 7C 03 0F"), "tag lenght does not meet expectations : 4");
    EXPECT_EQ(ParseFailure<TimeValueParser>("43 7C 03 0F"), "tag lenght does not meet expectations : 4");
    EXPECT_EQ(ParseFailure<DateValueParser>("44 7C 03 0F 05"),
              "tag type does not meet expectations : Date{10}");
    EXPECT_EQ(ParseFailure<TimeValueParser>("A4 7C 03 0F 05"),
              "tag type does not meet expectations : Time{11}");
}

TEST(DateAndTimeValueParser, RefuseEveryLengthButFour) {
    for (std::size_t length = 0; length < 8; ++length) {
        test::Octets const date = Tag::FromOctets(10, false, test::Octets(length)).GetBytes();
        test::Octets const time = Tag::FromOctets(11, false, test::Octets(length)).GetBytes();
        if (length == 4) {
            EXPECT_NO_THROW(ParseOctets<DateValueParser>(date));
            EXPECT_NO_THROW(ParseOctets<TimeValueParser>(time));
        } else {
            EXPECT_THROW(ParseOctets<DateValueParser>(date), ParseException) << length;
            EXPECT_THROW(ParseOctets<TimeValueParser>(time), ParseException) << length;
        }
    }
}

TEST(DateAndTimeValue, CompareAsEqualToAnyOtherOfTheirClass) {
    DateValue early(Date(100, 1, 1, any));
    DateValue late(Date(124, 3, 15, any));
    TimeValue morning(Time(6, 30, 0, 7));
    TimeValue evening(Time(18, 0, 0, 0));
    DateTimeValue first(early.GetValue(), morning.GetValue());
    DateTimeValue second(late.GetValue(), evening.GetValue());
    EXPECT_EQ(early.Compare(late), 0);
    EXPECT_EQ(late.Compare(early), 0);
    EXPECT_EQ(morning.Compare(evening), 0);
    EXPECT_EQ(evening.Compare(morning), 0);
    EXPECT_EQ(first.Compare(second), 0);
    EXPECT_EQ(second.Compare(first), 0);
}

TEST(DateAndTimeValue, CompareWithAnotherClassThrowsBadCast) {
    DateValue date;
    TimeValue time;
    DateTimeValue dateTime;
    EXPECT_THROW(date.Compare(time), std::bad_cast);
    EXPECT_THROW(time.Compare(date), std::bad_cast);
    EXPECT_THROW(dateTime.Compare(date), std::bad_cast);
}

TEST(TimeValueParser, OnTwoTagsNamesTheTagNumberAndTheOthersTheQuantity) {
    char const* const two = "B4 01 02 03 04 B4 01 02 03 04";
    EXPECT_EQ(ParseFailure<TimeValueParser>(two), "tag number does not meet expectations");
    EXPECT_EQ(ParseFailure<TimeValueParser>(""), "tag number does not meet expectations");
    EXPECT_EQ(ParseFailure<DateValueParser>(two), "tag quantity does not meet expectations");
    EXPECT_EQ(ParseFailure<DateValueParser>(""), "tag quantity does not meet expectations");
    EXPECT_EQ(ParseFailure<DateTimeValueParser>("A4 7C 03 0F 05"), "tag quantity does not meet expectations");
    EXPECT_EQ(ParseFailure<DateTimeValueParser>("A4 7C 03 0F 05 B4 00 00 00 00 10"),
              "tag quantity does not meet expectations");
}

TEST(DateTimeValueParser, ReadsADateAndThenATime) {
    auto const value = Read<DateTimeValue, DateTimeValueParser>("A4 7C 03 0F 05 B4 0C 1E 0F 63").GetValue();
    EXPECT_EQ(Text(value.date), "124 3 15 5");
    EXPECT_EQ(Text(value.time), "12 30 15 99");
    EXPECT_EQ(ParseFailure<DateTimeValueParser>("B4 0C 1E 0F 63 A4 7C 03 0F 05"),
              "tag type does not meet expectations : Date{10}");
    EXPECT_EQ(ParseFailure<DateTimeValueParser>("A4 7C 03 0F 05 A4 7C 03 0F 05"),
              "tag type does not meet expectations : Time{11}");
}

TEST(DateTimeParsers, RefuseConstructedTags) {
    EXPECT_THROW(ParseOctets<DateValueParser>(Hex("1E 1F")), ParseException);
    EXPECT_THROW(ParseOctets<TimeValueParser>(Hex("1E 1F")), ParseException);
    EXPECT_THROW(ParseOctets<DateTimeValueParser>(Hex("A4 7C 03 0F 05 1E 1F")), ParseException);
}

TEST(DateAndTimeValue, WriteTheirFourOctets) {
    EXPECT_EQ(Written(DateValue(124, 3, 15, 5)), "A4 7C 03 0F 05");
    EXPECT_EQ(Written(DateValue()), "A4 FF FF FF FF");
    EXPECT_EQ(Written(TimeValue(12, 30, 15, 99)), "B4 0C 1E 0F 63");
    EXPECT_EQ(Written(TimeValue()), "B4 00 00 00 00");
}

TEST(DateTimeValue, WritesTwoTagsAndNeverOne) {
    DateTimeValue const value(Date(124, 3, 15, any), Time(12, 30, 15, 99));
    EXPECT_EQ(Written(value), "A4 7C 03 0F FF B4 0C 1E 0F 63");
    EXPECT_EQ(Written(DateTimeValue()), "A4 FF FF FF FF B4 00 00 00 00");
    EXPECT_EQ(Failure<std::runtime_error>([&] { value.ToApplicationTag(); }), "Not emplemented");
}
