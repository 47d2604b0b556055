#include <gtest/gtest.h>

#include "Calendar.h"
#include "CalendarText.h"

using standard::CalendarDate;
using standard::DateOf;
using standard::DateOfText;
using standard::TimeOf;
using standard::TimeOfDay;
using standard::TimeOfText;
using std::chrono::hours;
using std::chrono::milliseconds;

TEST(Calendar, DatesOfInstants) {
    EXPECT_EQ(DateOf(milliseconds(0)), (CalendarDate{70, 1, 1, 4}));
    EXPECT_EQ(DateOf(hours(24 * 19782)), (CalendarDate{124, 2, 29, 4}));
    EXPECT_EQ(DateOf(hours(24 * 19783)), (CalendarDate{124, 3, 1, 5}));
    EXPECT_EQ(DateOf(hours(24 * 20088)), (CalendarDate{124, 12, 31, 2}));
    EXPECT_EQ(DateOf(hours(24 * 20089)), (CalendarDate{125, 1, 1, 3}));
}

TEST(Calendar, TimesOfInstants) {
    EXPECT_EQ(TimeOf(milliseconds(0)), (TimeOfDay{0, 0, 0, 0}));
    EXPECT_EQ(TimeOf(milliseconds(86'399'999)), (TimeOfDay{23, 59, 59, 99}));
    EXPECT_EQ(TimeOf(hours(24 * 19783) + milliseconds(45'296'780)), (TimeOfDay{12, 34, 56, 78}));
}

TEST(Calendar, EveryDayUpTo2153FollowsTheDayBefore) {
    CalendarDate before = DateOf(milliseconds(0));
    for (int day = 1; day < 184 * 365; ++day) {
        CalendarDate const date = DateOf(hours(24 * day));
        ASSERT_EQ(date[3], before[3] % 7 + 1) << day;
        ASSERT_EQ(date[3], standard::WeekdayOf(1900 + date[0], date[1], date[2])) << day;
        bool const isNextDay = date[1] == before[1] && date[2] == before[2] + 1;
        bool const isNextMonth =
            date[2] == 1 && before[2] == standard::DaysInMonth(1900 + before[0], before[1]);
        ASSERT_TRUE(isNextDay || isNextMonth) << day;
        before = date;
    }
}

TEST(CalendarText, Dates) {
    EXPECT_EQ(DateOfText("2024-03-15"), (CalendarDate{124, 3, 15, 5}));
    EXPECT_EQ(DateOfText("*-12-25"), (CalendarDate{255, 12, 25, 255}));
    EXPECT_EQ(DateOfText("*-*-*"), (CalendarDate{255, 255, 255, 255}));
    EXPECT_EQ(DateOfText("2024-02-29"), (CalendarDate{124, 2, 29, 4}));
}

TEST(CalendarText, WhatIsNoDate) {
    for (char const* text : {"", "2024", "2024-03", "2024-13-01", "2024-00-01", "2023-02-29", "2024-03-32",
                             "1899-01-01", "2155-01-01", "2024/03/15", "2024-03-15-", "2024-03-15 ",
                             "-2024-03-15", "x-03-15", "2024--15", "20240-03-15", "2024-3*-15"}) {
        EXPECT_FALSE(DateOfText(text)) << text;
    }
}

TEST(CalendarText, Times) {
    EXPECT_EQ(TimeOfText("08:00"), (TimeOfDay{8, 0, 0, 0}));
    EXPECT_EQ(TimeOfText("23:59:58"), (TimeOfDay{23, 59, 58, 0}));
    EXPECT_EQ(TimeOfText("08:00:30.50"), (TimeOfDay{8, 0, 30, 50}));
    EXPECT_EQ(TimeOfText("*:30"), (TimeOfDay{255, 30, 0, 0}));
}

TEST(CalendarText, WhatIsNoTime) {
    for (char const* text : {"", "8", "24:00", "08:60", "08:00:60", "08:00:00.100", "08.00", "08:00:00:00",
                             "08:00 ", ":00", "-8:00"}) {
        EXPECT_FALSE(TimeOfText(text)) << text;
    }
}
