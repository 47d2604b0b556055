#include "ScheduleChanges.h"

#include <gtest/gtest.h>

#include "ScheduleForPeople.h"

using namespace workbench;

namespace {

using Texts = std::vector<std::string>;

ValueNames const Celsius{"°C", {}, {}};

WeeklySchedule Week(std::string const& text) {
    return WeeklyOfPeople(text, Celsius).schedule.value();
}

ExceptionSchedule Days(std::string const& text) {
    return ExceptionOfPeople(text, Celsius).schedule.value();
}

Texts WeekChanges(std::string const& before, std::string const& after) {
    return Changes(Week(before), Week(after), Celsius);
}

Texts DayChanges(std::string const& before, std::string const& after) {
    return Changes(Days(before), Days(after), Celsius);
}

}  // namespace

TEST(ScheduleChanges, NameWhatIsAddedRemovedAndAnother) {
    EXPECT_EQ(WeekChanges("Mon 06:00 21.5, 20:00 17", "Mon 06:00 22, 20:00 17, 22:00 16"),
              (Texts{"Monday 06:00: 21.5 °C becomes 22 °C", "Monday: 22:00 16 °C added"}));
    EXPECT_EQ(WeekChanges("Mon 06:00 21.5, 20:00 17", "Mon 20:00 17"),
              (Texts{"Monday: 06:00 21.5 °C removed"}));
    EXPECT_EQ(WeekChanges("Mon 06:00 21.5", "Mon 05:30 21.5"),
              (Texts{"Monday: 06:00 21.5 °C moved to 05:30"}));
    EXPECT_EQ(WeekChanges("Mon 06:00 1", "Mon 06:00 enumerated 1"),
              (Texts{"Monday 06:00: real 1 °C becomes enumerated 1"}));
    EXPECT_EQ(WeekChanges("Mon 06:00 1", "Mon 06:00 null"), (Texts{"Monday 06:00: real 1 °C becomes null"}));
}

TEST(ScheduleChanges, NameDaysWithTheSameChangesOnce) {
    EXPECT_EQ(WeekChanges("Mon-Fri 06:00 21", "Mon-Fri 06:00 22"),
              (Texts{"Monday to Friday 06:00: 21 °C becomes 22 °C"}));
    EXPECT_EQ(WeekChanges("Mon-Sun none", "Sat-Sun 08:00 19; Mon 08:00 19"),
              (Texts{"Monday: 08:00 19 °C added", "Saturday and Sunday: 08:00 19 °C added"}));
}

TEST(ScheduleChanges, AreNoneForAnotherSpelling) {
    WeeklySchedule week = Week("Mon 06:00 21.5, 20:00 17");
    WeeklySchedule other = week;
    other.days[0][0].value.text = "21.500";
    std::swap(other.days[0][0], other.days[0][1]);
    EXPECT_FALSE(week == other);
    EXPECT_TRUE(SameSchedule(week, other));
    EXPECT_TRUE(Changes(week, other, {}).empty());
    ExceptionSchedule const days = Days("2026-12-25 00:00 16");
    ExceptionSchedule without = days;
    std::get<ScheduleDate>(without.events[0].period).weekday.reset();
    EXPECT_TRUE(SameSchedule(days, without));
}

TEST(ScheduleChanges, NameEvents) {
    std::string const christmas = "2026-12-25 (priority 10) 00:00 16";
    EXPECT_EQ(DayChanges(christmas, christmas + "; last Friday in March 12:00 17"),
              (Texts{"event 2 (every last Friday in March) added: priority 16, 12:00 17 °C"}));
    EXPECT_EQ(DayChanges(christmas + "; calendar 7 12:00 17", "calendar 7 (priority 4) 12:00 18"),
              (Texts{"event 1 (25 December 2026) removed",
                     "event 1 (the days of calendar 7): priority 16 becomes 4",
                     "event 1 (the days of calendar 7) 12:00: 17 °C becomes 18 °C"}));
    EXPECT_EQ(DayChanges(christmas, "2026-12-26 (priority 10) 00:00 16"),
              (Texts{"event 1 (26 December 2026): was 25 December 2026"}));
    EXPECT_EQ(DayChanges(christmas + "; calendar 7 12:00 17", "calendar 7 12:00 17; " + christmas),
              (Texts{"the order of the events is changed; it decides between equal priorities"}));
}

TEST(ScheduleChanges, OfManyEventsAreFoundAtOnce) {
    ExceptionSchedule schedule;
    for (unsigned i = 0; i < 20000; ++i) {
        schedule.events.push_back(
            {CalendarReference{7}, 16, {{{0u, 0u, 0u, 0u}, {ScheduleValueType::Real, "1"}}}});
    }
    ExceptionSchedule other = schedule;
    other.events[12345].entries[0].value.text = "2";
    EXPECT_EQ(Changes(schedule, other, {}),
              (Texts{"event 12346 (the days of calendar 7) 00:00: 1 becomes 2"}));
}
