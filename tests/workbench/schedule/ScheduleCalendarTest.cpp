#include "ScheduleCalendar.h"

#include <gtest/gtest.h>

#include "ScheduleJson.h"

using namespace workbench;

namespace {

std::string Days(Period const& period, unsigned year = 2026) {
    std::string text;
    for (ScheduleDate const& day : DaysOf({period, 16, {}}, year)) {
        text += (text.empty() ? "" : " ") + DayText(day);
    }
    return text;
}

std::size_t Count(Period const& period, unsigned year = 2026) {
    return DaysOf({period, 16, {}}, year).size();
}

constexpr std::nullopt_t Any = std::nullopt;

}  // namespace

TEST(ScheduleCalendar, HasTheDaysOfADate) {
    EXPECT_EQ(Days(ScheduleDate{2026, 12, 25, 5}), "2026-12-25");
    EXPECT_EQ(Days(ScheduleDate{2026, 12, 25, 4}), "") << "it is a Friday";
    EXPECT_EQ(Days(ScheduleDate{2025, 12, 25, Any}), "");
    EXPECT_EQ(Days(ScheduleDate{Any, 2, 32, Any}, 2028), "2028-02-29");
    EXPECT_EQ(Days(ScheduleDate{Any, 2, 29, Any}), "");
    EXPECT_EQ(Count(ScheduleDate{Any, 13, 32, Any}), 6u);
    EXPECT_EQ(Count(ScheduleDate{Any, 1, 33, Any}), 16u);
    EXPECT_EQ(Count(ScheduleDate{}, 2028), 366u);
}

TEST(ScheduleCalendar, HasTheDaysOfARange) {
    EXPECT_EQ(Days(DateRange{{2026, 12, 30, Any}, {2027, 1, 2, Any}}), "2026-12-30 2026-12-31");
    EXPECT_EQ(Days(DateRange{{2026, 12, 30, Any}, {2027, 1, 2, Any}}, 2027), "2027-01-01 2027-01-02");
    EXPECT_EQ(Count(DateRange{{}, {2026, 1, 31, Any}}), 31u);
    EXPECT_EQ(Count(DateRange{{2026, 12, 1, Any}, {}}), 31u);
    EXPECT_EQ(Count(DateRange{{2026, 12, 1, Any}, {2026, 11, 1, Any}}), 0u);
}

TEST(ScheduleCalendar, HasTheDaysOfWeeks) {
    EXPECT_EQ(Days(WeekAndDay{12, 6, 5}), "2026-12-25");
    EXPECT_EQ(Days(WeekAndDay{12, 1, 2}), "2026-12-01");
    EXPECT_EQ(Days(WeekAndDay{12, 5, Any}), "2026-12-29 2026-12-30 2026-12-31");
    EXPECT_EQ(Days(WeekAndDay{2, 6, Any}),
              "2026-02-22 2026-02-23 2026-02-24 2026-02-25 2026-02-26 2026-02-27 2026-02-28");
    EXPECT_EQ(Days(WeekAndDay{12, 7, 5}), "2026-12-18");
    EXPECT_EQ(Days(WeekAndDay{12, 9, 5}), "2026-12-04");
    EXPECT_EQ(Count(WeekAndDay{14, Any, 1}), 26u) << "the Mondays of even months of 2026";
}

TEST(ScheduleCalendar, DoesNotKnowTheDaysOfACalendar) {
    EXPECT_EQ(Days(CalendarReference{7}), "");
}

TEST(ScheduleCalendar, HasTheYearsOfBacnetDates) {
    EXPECT_EQ(Count(ScheduleDate{}, 1899), 0u);
    EXPECT_EQ(Count(ScheduleDate{}, 2155), 0u);
    EXPECT_EQ(Count(ScheduleDate{}, 4294967295u), 0u);
    EXPECT_EQ(Count(ScheduleDate{}, 2154), 365u);
}
