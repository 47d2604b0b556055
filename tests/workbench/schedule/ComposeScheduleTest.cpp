#include "ComposeSchedule.h"

#include <gtest/gtest.h>

#include "ScheduleForPeople.h"
#include "ScheduleLosses.h"
#include "ThroughDriver.h"

using namespace workbench;

namespace {

template <typename Typed>
auto Schedule(Typed const& typed) {
    EXPECT_EQ(typed.mistake, "");
    return typed.schedule.value();
}

// The text, or the first mistake.
template <typename Model>
std::string Composed(Model const& schedule) {
    ComposedSchedule const composed = Compose(schedule);
    EXPECT_NE(composed.text.empty(), composed.mistakes.empty());
    return composed.mistakes.empty() ? composed.text : RemarkText(composed.mistakes.front());
}

std::string Week(std::string const& text) {
    return Composed(Schedule(WeeklyOfPeople(text, {})));
}

std::string Days(std::string const& text) {
    return Composed(Schedule(ExceptionOfPeople(text, {})));
}

std::string Text(std::vector<ScheduleLoss> const& losses) {
    std::string text;
    for (ScheduleLoss const& loss : losses) {
        text += (text.empty() ? "" : "\n") + loss.place + ": " + loss.reason;
    }
    return text;
}

std::string WeekLosses(std::string const& text) {
    return Text(Losses(Schedule(WeeklyOfPeople(text, {}))));
}

std::string DayLosses(std::string const& text) {
    return Text(Losses(Schedule(ExceptionOfPeople(text, {}))));
}

}  // namespace

TEST(ComposeSchedule, WritesAWeek) {
    EXPECT_EQ(Week("Mon 08:00 21.5, 17:30 18; Tue 07:00 true"),
              "08000000,4,9,21.500000,17300000,4,9,18.000000;07000000,1,1,1;;;;;;");
    EXPECT_EQ(Week("Mon-Sun none"), ";;;;;;;");
    EXPECT_EQ(Week("Sun 12:15:30.25 null, 13:00 enumerated 4294967291"),
              ";;;;;;12153025,0,1,0,13000000,9,2,-5;");
    EXPECT_EQ(Week("Mon 12:00 unsigned 1, 13:00 signed 0, 14:00 double 2, 15:00 octet-string 0AFF"),
              "12000000,2,2,1d,13000000,3,1,0,14000000,5,8,2.000000,15000000,6,4,0aff;;;;;;;");
    EXPECT_EQ(Week("Mon 12:00 \"hello\", 13:00 bit-string 1010, 14:00 date 2024-03-15, 15:00 time 06:30"),
              "12000000,7,5,hello,13000000,8,4,1010,14000000,10,9,515032024,15000000,11,8,06300000;;;;;;;");
    EXPECT_EQ(Week("Mon 12:00 object-identifier analog-value 1234"), "12000000,12,2,1234;;;;;;;");
}

TEST(ComposeSchedule, WritesEvents) {
    EXPECT_EQ(Days("2024-03-15 08:00 true, 17:00 false; calendar 7 (priority 10) 08:00 20; "
                   "first Tuesday (priority 5) 12:00 null, 13:00 enumerated 1"),
              "0,515032024,16,08000000,1,1,1,17000000,1,1,0;3,7,10,08000000,4,9,20.000000;"
              "2,**12,5,12000000,,13000000,9,1,1;");
    EXPECT_EQ(Days("2026-07-13 to 2026-08-21 (priority 3) 00:00 unsigned 1"),
              "1,113072026,521082026,3,00000000,2,1,1;");
    EXPECT_EQ(Days("*-12-* 00:00 1; Friday *-*-last 00:00 1"),
              "0,***12****,16,00000000,4,8,1.000000;0,532******,16,00000000,4,8,1.000000;");
}

TEST(ComposeSchedule, RefusesWhatTheDriverCannotWrite) {
    EXPECT_EQ(
        Days("none"),
        "the driver cannot write an exception schedule without events; keep one, for example on a day of the "
        "past");
    EXPECT_EQ(
        Days("calendar 7 none"),
        "event 1: an event without entries would merge with others in the driver's text; give it an entry or "
        "remove it");
    EXPECT_EQ(Week("Mon 06:00 \"a,b\""),
              "Monday 06:00: the driver splits a text at ',' and ';', so \"a,b\" cannot be written");
    EXPECT_EQ(Week("Mon 06:00 \"\""), "Monday 06:00: the driver cannot write an empty value");
    EXPECT_EQ(Days("calendar 7 06:00 octet-string"),
              "event 1, 06:00: the driver cannot write an empty value");
    EXPECT_EQ(Week("Mon *:30 1"), "Monday *:30: the driver cannot write a time with an unspecified part");
    EXPECT_EQ(Week("Mon 06:00 time 06:*"),
              "Monday 06:00: the driver cannot write a time with an unspecified part");
    EXPECT_EQ(Week("Mon 06:00 unsigned 2147483648"),
              "Monday 06:00: the driver cannot write the Unsigned 2147483648; the largest is 2147483647");
    EXPECT_EQ(Week("Mon 06:00 \"" + std::string(253, 'x') + "\""),
              "Monday 06:00: the value has 253 octets; the driver can write 252");
    WeeklySchedule wrong;
    wrong.days[2] = {{{24u, 0u, 0u, 0u}, {}}, {{1u, 0u, 0u, 0u}, {ScheduleValueType::Real, "warm"}}};
    ScheduleRemarks const mistakes = Compose(wrong).mistakes;
    ASSERT_EQ(mistakes.size(), 2u);
    EXPECT_EQ(RemarkText(mistakes[0]), "Wednesday 24:00: hour 24 is not one of 0 to 23");
    EXPECT_EQ(RemarkText(mistakes[1]),
              "Wednesday 01:00: \"warm\" is not a value of type real; expected a number such as 21.5");
}

// Each mistake would fail in the driver, or change other values.
TEST(ComposeSchedule, RefusesNothingThatTheDriverAccepts) {
    EXPECT_THROW(test::ExceptionThroughDriver(""), std::runtime_error);
    EXPECT_THROW(test::WeeklyThroughDriver("06000000,7,3,a,b;;;;;;;"), std::runtime_error);
    EXPECT_THROW(test::WeeklyThroughDriver("06000000,7,0,;;;;;;;"), std::runtime_error);
    EXPECT_THROW(test::ExceptionThroughDriver("3,7,16,06000000,6,0,;"), std::runtime_error);
    EXPECT_THROW(test::WeeklyThroughDriver("06000000,2,10,2147483648;;;;;;;"), std::out_of_range);
    EXPECT_EQ(test::ExceptionThroughDriver("3,7,16;3,8,16,06000000,1,1,1;"), "3,8,16,06000000,1,1,1;");
    EXPECT_EQ(test::ExceptionThroughDriver("3,8,16,06000000,1,1,1;3,7,16;"), "3,8,16,06000000,1,1,1");
    EXPECT_NO_THROW(test::WeeklyThroughDriver("06000000,7,1," + std::string(252, 'x') + ";;;;;;;"));
    EXPECT_ANY_THROW(test::WeeklyThroughDriver("06000000,7,1," + std::string(253, 'x') + ";;;;;;;"));
}

TEST(ScheduleLosses, NameNumbersThatTheDeviceReceivesOtherwise) {
    EXPECT_EQ(WeekLosses("Mon 06:00 unsigned 45; Tue 06:00 signed -7"),
              "Monday 06:00: the driver writes only 0 or 1 as Unsigned: the device receives 1 instead of 45\n"
              "Tuesday 06:00: the driver writes only 0 or 1 as Signed: the device receives 1 instead of -7");
    EXPECT_EQ(WeekLosses("Mon 06:00 unsigned 1, 07:00 signed 0, 08:00 enumerated 7, 09:00 21.5"), "");
    EXPECT_EQ(WeekLosses("Mon 06:00 0.1234567"),
              "Monday 06:00: the driver writes six decimals: the device receives 0.123457");
    EXPECT_EQ(WeekLosses("Mon 06:00 1e30, 07:00 double 0.1"), "");
}

TEST(ScheduleLosses, NameWhatIsReadOtherwise) {
    EXPECT_EQ(
        WeekLosses("Mon 06:00 null"),
        "Monday 06:00: the device receives Null, but the driver leaves it out when it reads the schedule");
    EXPECT_EQ(DayLosses("calendar 7 06:00 null"), "");
    EXPECT_EQ(DayLosses("*-12-25 06:00 1; 2026-12-25 06:00 1; *-*-* 06:00 1"), "");
    EXPECT_EQ(DayLosses("calendar 7 06:00 1; *-12-* 06:00 1"),
              "event 2: the device receives every day in December; when it is read again, the driver's text "
              "looks like every 25 December");
    EXPECT_EQ(DayLosses("calendar 7 06:00 date 2026-12-*"),
              "event 1, 06:00: the device receives every day in December 2026; when it is read again, the "
              "driver's text looks like 25 December 2026");
}

TEST(ScheduleLosses, NameTheZeroForAnyMonthWeekAndWeekday) {
    EXPECT_EQ(DayLosses("last Friday 06:00 1"),
              "event 1: the device receives 0 for an unspecified month, week or weekday, where the standard "
              "has 255");
    EXPECT_EQ(DayLosses("last Friday in December 06:00 1"), "");
}
