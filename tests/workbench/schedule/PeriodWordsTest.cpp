#include "PeriodWords.h"

#include <gtest/gtest.h>

using namespace workbench;

namespace {

std::string Date(std::optional<unsigned> year, std::optional<unsigned> month, std::optional<unsigned> day,
                 std::optional<unsigned> weekday = {}) {
    return PeriodWords(ScheduleDate{year, month, day, weekday});
}

std::string Days(std::optional<unsigned> month, std::optional<unsigned> week,
                 std::optional<unsigned> weekday) {
    return PeriodWords(WeekAndDay{month, week, weekday});
}

constexpr std::nullopt_t Any = std::nullopt;

}  // namespace

TEST(PeriodWords, OfADate) {
    EXPECT_EQ(Date(2026, 12, 25), "25 December 2026");
    EXPECT_EQ(Date(2026, 12, 25, 5), "25 December 2026");
    EXPECT_EQ(Date(2026, 12, 25, 2), "25 December 2026, if it is a Tuesday");
    EXPECT_EQ(Date(Any, 12, 25), "every 25 December");
    EXPECT_EQ(Date(Any, 12, 25, 5), "every 25 December, if it is a Friday");
    EXPECT_EQ(Date(2026, 12, Any), "every day in December 2026");
    EXPECT_EQ(Date(2026, 12, Any, 5), "every Friday in December 2026");
    EXPECT_EQ(Date(Any, Any, Any), "every day");
    EXPECT_EQ(Date(Any, Any, Any, 7), "every Sunday");
    EXPECT_EQ(Date(Any, 13, 32), "the last day in odd months");
    EXPECT_EQ(Date(2026, 14, 33), "odd days in even months of 2026");
    EXPECT_EQ(Date(Any, Any, 25), "day 25 of every month");
    EXPECT_EQ(Date(2026, Any, 25), "day 25 of every month in 2026");
}

TEST(PeriodWords, OfARange) {
    EXPECT_EQ(PeriodWords(DateRange{{2026, 7, 13, {}}, {2026, 8, 21, {}}}), "13 July 2026 to 21 August 2026");
    EXPECT_EQ(PeriodWords(DateRange{{2026, 7, 13, {}}, {}}), "from 13 July 2026");
    EXPECT_EQ(PeriodWords(DateRange{{}, {2026, 7, 13, {}}}), "until 13 July 2026");
    EXPECT_EQ(PeriodWords(DateRange{}), "every day");
}

TEST(PeriodWords, OfWeeksAndDays) {
    EXPECT_EQ(Days(12, 6, 5), "every last Friday in December");
    EXPECT_EQ(Days(Any, 1, 2), "every first Tuesday");
    EXPECT_EQ(Days(13, Any, 1), "every Monday in odd months");
    EXPECT_EQ(Days(Any, Any, 1), "every Monday");
    EXPECT_EQ(Days(14, Any, Any), "every day in even months");
    EXPECT_EQ(Days(Any, Any, Any), "every day");
    EXPECT_EQ(Days(13, 2, Any), "days 8 to 14 of odd months");
    EXPECT_EQ(Days(Any, 5, Any), "days 29 to 31 of every month");
    EXPECT_EQ(Days(12, 6, Any), "the last seven days of December");
    EXPECT_EQ(Days(12, 7, 5), "every second to last Friday in December");
}

TEST(PeriodWords, OfACalendar) {
    EXPECT_EQ(PeriodWords(CalendarReference{7}), "the days of calendar 7");
}
