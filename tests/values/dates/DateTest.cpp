#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "Date.h"
#include "ValueTags.h"

namespace {

constexpr unsigned long long UnitsPerDay = 864000000000ULL;
constexpr unsigned long long DaysTo15March2024 = 154571;  // from 1 January 1601
constexpr std::uint8_t Any = 255;

// The month tables must exist before the initialisers of other files run.
unsigned long long const FileTimeMadeAtLoad = Date(124, 3, 15, Any).ToFileTime();

// The date made from a number of days since 1 January 1601.
std::string DateOfDays(unsigned long long days) {
    return test::Text(Date(days * UnitsPerDay));
}

}  // namespace

TEST(Date, Of15March2024GivesTheFileTimeOfItsMidnightWhateverTheWeekday) {
    EXPECT_EQ(Date(124, 3, 15, Any).ToFileTime(), DaysTo15March2024 * UnitsPerDay);
    EXPECT_EQ(Date(124, 3, 15, 5).ToFileTime(), DaysTo15March2024 * UnitsPerDay);
}

TEST(Date, IsCountedFrom1601) {
    EXPECT_EQ(Date(0, 1, 1, 1).ToFileTime(), 109207 * UnitsPerDay);
    EXPECT_EQ(Date(0, 12, 31, 1).ToFileTime(), (109207 + 364) * UnitsPerDay);
    EXPECT_EQ(Date(70, 1, 1, 4).ToFileTime(), 116444736000000000ULL);  // the start of Unix time
    EXPECT_EQ(Date(100, 3, 1, 3).ToFileTime(), 125963424000000000ULL);
}

TEST(Date, IsCountedBeforeOtherFilesAreInitialised) {
    EXPECT_EQ(FileTimeMadeAtLoad, DaysTo15March2024 * UnitsPerDay);
}

TEST(Date, OfAllUnspecifiedGivesZero) {
    EXPECT_EQ(Date(Any, Any, Any, Any).ToFileTime(), 0U);
    EXPECT_EQ(Date().ToFileTime(), 0U);
}

TEST(Date, OfUnspecifiedYearAndFebruaryAddsTheDaysOfJanuaryAndOfItsOwnOnly) {
    EXPECT_EQ(Date(Any, 2, Any, Any).ToFileTime(), 31 * UnitsPerDay);
    EXPECT_EQ(Date(Any, 2, 10, Any).ToFileTime(), 40 * UnitsPerDay);
}

TEST(Date, OfUnspecifiedYearCountsTheMonthsOfAnOrdinaryYear) {
    EXPECT_EQ(Date(Any, 3, 1, Any).ToFileTime(), 59 * UnitsPerDay);
}

TEST(Date, OfUnspecifiedMonthOrDayAddsNothingForIt) {
    EXPECT_EQ(Date(0, Any, 10, Any).ToFileTime(), (109207 + 9) * UnitsPerDay);
    EXPECT_EQ(Date(0, 3, Any, Any).ToFileTime(), (109207 + 59) * UnitsPerDay);
}

TEST(Date, CountsMonthsUpToTheEndOfTheTableAndNoFurther) {
    EXPECT_EQ(Date(Any, 13, Any, Any).ToFileTime(), 365 * UnitsPerDay);
    EXPECT_EQ(Date(Any, 254, Any, Any).ToFileTime(), 365 * UnitsPerDay);
    EXPECT_EQ(Date(Any, 0, Any, Any).ToFileTime(), 0U);
    EXPECT_EQ(Date(Any, 2, 0, Any).ToFileTime(), 30 * UnitsPerDay);
}

TEST(Date, CountsLeapYears) {
    EXPECT_TRUE(Date::IsLeapYear(2024));
    EXPECT_TRUE(Date::IsLeapYear(2000));
    EXPECT_FALSE(Date::IsLeapYear(1900));
    EXPECT_FALSE(Date::IsLeapYear(2023));
}

TEST(Date, ListsTheDaysOfTheMonths) {
    using Days = std::vector<char>;
    EXPECT_EQ(Date::originalYearMonthDays, (Days{0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31}));
    EXPECT_EQ(Date::laepYearMonthDays, (Days{0, 31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31}));
}

TEST(Date, IsConvertedWithoutTheListsOfDays) {
    Date const date(124, 3, 15, Any);
    auto const time = date.ToFileTime();
    Date const back(time);
    auto const original = std::exchange(Date::originalYearMonthDays, {});
    auto const leap = std::exchange(Date::laepYearMonthDays, {});
    EXPECT_EQ(date.ToFileTime(), time);
    EXPECT_EQ(Date(time).month, back.month);
    EXPECT_EQ(Date(time).day, back.day);
    Date::originalYearMonthDays = original;
    Date::laepYearMonthDays = leap;
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
    EXPECT_EQ(DateOfDays(DaysTo15March2024), "124 3 12 255");
    EXPECT_EQ(DateOfDays(109208), "0 1 254 255");
}

TEST(Date, OfAFileTimeInDecemberOrLaterReadsNoFurtherMonth) {
    unsigned long long const lastDayOf2022 = Date(122, 12, 31, Any).ToFileTime() / UnitsPerDay;
    // The sum of the years is reached on the following day, so the last day has the number 364.
    EXPECT_EQ(DateOfDays(lastDayOf2022), "122 12 255 255");
    // 1 January 2024 is still counted in 2023 by the length of 2024: the 366th day of an ordinary year.
    unsigned long long const firstDayOf2024 = Date(124, 1, 1, Any).ToFileTime() / UnitsPerDay;
    EXPECT_EQ(DateOfDays(firstDayOf2024), "123 12 1 255");
}

TEST(Date, OfAnyFileTimeIsMadeWithinBounds) {
    for (unsigned long long days = 109207; days < 210000; ++days) {
        Date const date(days * UnitsPerDay);
        ASSERT_LE(date.month, 12) << days;
        ASSERT_EQ(date.weekday, Any);
    }
    Date const last(~0ULL);
    EXPECT_LE(last.month, 12);
}
