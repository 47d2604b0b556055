#include "InForce.h"

#include <gtest/gtest.h>

#include "ScheduleForPeople.h"
#include "ScheduleParts.h"

using namespace workbench;

namespace {

ValueNames const Celsius{"°C", {}, {}};

WeeklySchedule Week(std::string const& text) {
    auto const typed = WeeklyOfPeople(text, Celsius);
    EXPECT_EQ(typed.mistake, "");
    return typed.schedule.value_or(WeeklySchedule());
}

ExceptionSchedule Days(std::string const& text) {
    auto const typed = ExceptionOfPeople(text, Celsius);
    EXPECT_EQ(typed.mistake, "");
    return typed.schedule.value_or(ExceptionSchedule());
}

ScheduleInstant At(std::string const& date, std::string const& time) {
    return {*DateIn(date), *TimeOfDayIn(time)};
}

std::string Text(std::optional<ValueInForce> const& value) {
    return value ? value->words + " | " + value->source + " | " + InstantText(value->since) + " | " +
                       (value->until ? InstantText(*value->until) : "-")
                 : "-";
}

ScheduleInForce InForceAt(std::string const& week, std::string const& days, std::string const& date,
                          std::string const& time) {
    WeeklySchedule const weekly = Week(week);
    ExceptionSchedule const exception = Days(days);
    return InForce(&weekly, &exception, At(date, time), Celsius);
}

std::string Now(std::string const& week, std::string const& days, std::string const& date,
                std::string const& time) {
    return Text(InForceAt(week, days, date, time).now);
}

std::string Next(std::string const& week, std::string const& days, std::string const& date,
                 std::string const& time) {
    return Text(InForceAt(week, days, date, time).next);
}

std::string const Working = "Mon-Fri 06:00 21.5, 20:00 17";

}  // namespace

// 21 December 2026 is a Monday.

TEST(InForce, IsTheLastEntryOfTheDay) {
    EXPECT_EQ(Now(Working, "none", "2026-12-21", "12:00"),
              "21.5 °C | weekly schedule, Monday | 2026-12-21T06:00:00 | 2026-12-21T20:00:00");
    EXPECT_EQ(Next(Working, "none", "2026-12-21", "12:00"),
              "17 °C | weekly schedule, Monday | 2026-12-21T20:00:00 | 2026-12-22T00:00:00");
    EXPECT_EQ(Now(Working, "none", "2026-12-21", "20:00"),
              "17 °C | weekly schedule, Monday | 2026-12-21T20:00:00 | 2026-12-22T00:00:00");
}

TEST(InForce, IsTheDefaultFromMidnightToTheFirstEntry) {
    EXPECT_EQ(Now(Working, "none", "2026-12-22", "05:59"),
              "the default | default | 2026-12-22T00:00:00 | 2026-12-22T06:00:00");
    EXPECT_EQ(Next(Working, "none", "2026-12-25", "21:00"),
              "the default | default | 2026-12-26T00:00:00 | 2026-12-28T06:00:00");
}

TEST(InForce, LastsOverMidnightWithAnEntryAtThatTime) {
    EXPECT_EQ(Now("Mon 06:00 21, 20:00 17; Tue 00:00 17, 06:00 21", "none", "2026-12-21", "22:00"),
              "17 °C | weekly schedule, Monday | 2026-12-21T20:00:00 | 2026-12-22T06:00:00");
}

TEST(InForce, IsTheEventWithTheHighestPriority) {
    std::string const days =
        "2026-12-21 (priority 10) 08:00 16, 18:00 null; 2026-12-21 (priority 3) 12:00 5, 13:00 null";
    EXPECT_EQ(Now(Working, days, "2026-12-21", "07:00"),
              "21.5 °C | weekly schedule, Monday | 2026-12-21T06:00:00 | 2026-12-21T08:00:00");
    EXPECT_EQ(Now(Working, days, "2026-12-21", "11:00"),
              "16 °C | event 1 (21 December 2026), priority 10 | 2026-12-21T08:00:00 | 2026-12-21T12:00:00");
    EXPECT_EQ(Now(Working, days, "2026-12-21", "12:30"),
              "5 °C | event 2 (21 December 2026), priority 3 | 2026-12-21T12:00:00 | 2026-12-21T13:00:00");
    EXPECT_EQ(Now(Working, days, "2026-12-21", "13:30"),
              "16 °C | event 1 (21 December 2026), priority 10 | 2026-12-21T13:00:00 | 2026-12-21T18:00:00");
    EXPECT_EQ(Now(Working, days, "2026-12-21", "19:00"),
              "21.5 °C | weekly schedule, Monday | 2026-12-21T18:00:00 | 2026-12-21T20:00:00");
}

TEST(InForce, IsTheFirstOfEventsWithTheSamePriority) {
    EXPECT_EQ(Now("Mon-Sun none", "2026-12-21 (priority 9) 08:00 1; every Monday (priority 9) 08:00 2",
                  "2026-12-21", "09:00"),
              "1 °C | event 1 (21 December 2026), priority 9 | 2026-12-21T08:00:00 | 2026-12-22T00:00:00");
}

TEST(InForce, IsTheWeekAfterNullInEachEvent) {
    EXPECT_EQ(Now("Mon 06:00 20, 12:00 null", "2026-12-21 07:00 null", "2026-12-21", "13:00"),
              "the default | default | 2026-12-21T12:00:00 | 2026-12-28T06:00:00");
}

TEST(InForce, HasNoEndWithoutAChangeInAYear) {
    EXPECT_EQ(Now("daily 00:00 20", "none", "2026-12-21", "13:00"),
              "20 °C | weekly schedule, Monday | 2026-12-21T00:00:00 | -");
    EXPECT_EQ(Next("daily 00:00 20", "none", "2026-12-21", "13:00"), "-");
    EXPECT_EQ(Next("Mon-Sun none", "2027-11-30 12:00 5", "2026-12-21", "13:00"),
              "5 °C | event 1 (30 November 2027), priority 16 | 2027-11-30T12:00:00 | 2027-12-01T00:00:00");
}

TEST(InForce, SaysWhichCalendarsAndTimesAreNotKnown) {
    ScheduleInForce const found = InForceAt("Mon *:30 20", "calendar 7 00:00 16", "2026-12-21", "13:00");
    ASSERT_EQ(found.notes.size(), 2u);
    EXPECT_EQ(RemarkText(found.notes[0]),
              "Monday *:30: what is in force leaves this entry out: its time is not complete");
    EXPECT_EQ(
        RemarkText(found.notes[1]),
        "event 1: the days of the calendar are not known; on them this event is in force by its priority");
    EXPECT_EQ(Text(found.now), "the default | default | 2026-12-21T00:00:00 | -");
}

TEST(InForce, SaysThatARangeOfPartsOfDatesIsUncertain) {
    ScheduleInForce const found = InForceAt(
        Working, "*-12-20 to *-01-06 00:00 16; 2026-12-20 to *-*-* 00:00 16", "2026-12-21", "13:00");
    ASSERT_EQ(found.notes.size(), 1u);
    EXPECT_EQ(RemarkText(found.notes[0]),
              "event 1: the standard has only complete dates in a range; the device may find other days than "
              "these");
}

TEST(InForce, KnowsWhichScheduleIsMissing) {
    EXPECT_FALSE(InForce(nullptr, nullptr, At("2026-12-21", "13:00"), {}).now);
    WeeklySchedule const weekly = Week(Working);
    ScheduleInForce const found = InForce(&weekly, nullptr, At("2026-12-21", "13:00"), {});
    EXPECT_EQ(found.now->words, "21.5");
    ASSERT_EQ(found.notes.size(), 1u);
    EXPECT_EQ(RemarkText(found.notes[0]), "the exception schedule is not known, and is left out");
}

// As many events as a text can hold, which never change what is in force.
TEST(InForce, EndsItsSearchInALongSchedule) {
    ExceptionSchedule schedule;
    for (int i = 0; i < 40000; ++i) {
        schedule.events.push_back({ScheduleDate{}, 16, {{{0u, 0u, 0u, 0u}, {ScheduleValueType::Real, "1"}}}});
    }
    ScheduleInForce const found = InForce(nullptr, &schedule, At("2026-12-21", "13:00"), {});
    EXPECT_EQ(found.now->words, "1");
    EXPECT_FALSE(found.now->until);
}
