#include "ReadSchedule.h"

#include <gtest/gtest.h>

#include "ScheduleForPeople.h"
#include "ScheduleParts.h"

using namespace workbench;

namespace {

template <typename Reading>
std::string NotesOf(Reading const& reading) {
    std::string text;
    for (ScheduleRemark const& note : reading.notes) {
        text += (text.empty() ? "" : "\n") + RemarkText(note);
    }
    return text;
}

// What the text means, for people, or the mistake.
std::string Week(std::string const& text) {
    auto const reading = ReadWeekly(text);
    return reading.schedule ? WeeklyForPeople(*reading.schedule, {}) : RemarkText(reading.mistake);
}

std::string Days(std::string const& text) {
    auto const reading = ReadException(text);
    return reading.schedule ? ExceptionForPeople(*reading.schedule, {}) : RemarkText(reading.mistake);
}

// The value of a single entry at noon on Monday.
std::string Value(std::string const& tail) {
    return Week("12000000," + tail + ";;;;;;;").substr(std::string("Mon 12:00 ").size());
}

std::string WeekNotes(std::string const& text) {
    return NotesOf(ReadWeekly(text));
}

std::string DayNotes(std::string const& text) {
    return NotesOf(ReadException(text));
}

// The date of an event, and its note.
std::string Date(std::string const& digits) {
    auto const reading = ReadException("0," + digits + ",16,12000000,1,1,1;");
    EXPECT_TRUE(reading.schedule) << RemarkText(reading.mistake);
    std::string const notes = NotesOf(reading);
    return PartText(std::get<ScheduleDate>(reading.schedule->events.at(0).period)) +
           (notes.empty() ? "" : " ?");
}

}  // namespace

TEST(ReadSchedule, ReadsAWeek) {
    EXPECT_EQ(Week("08000000,4,9,21.500000,17300000,4,9,18.000000;07000000,1,1,1;;;;;;"),
              "Mon 08:00 21.5, 17:30 18; Tue 07:00 true");
    EXPECT_EQ(Week(";;;;;;;"), "Mon-Sun none");
    EXPECT_EQ(Week(";;;;;;12153025,9,1,2"), "Sun 12:15:30.25 enumerated 2");
}

TEST(ReadSchedule, ReadsEachTypeOfValue) {
    EXPECT_EQ(Value("1,1,1"), "true");
    EXPECT_EQ(Value("2,3,45d"), "unsigned 45");
    EXPECT_EQ(Value("3,2,-7"), "signed -7");
    EXPECT_EQ(Value("4,9,21.500000"), "21.5");
    EXPECT_EQ(Value("5,9,21.500000"), "double 21.5");
    EXPECT_EQ(Value("6,4,0aff"), "octet-string 0aff");
    EXPECT_EQ(Value("7,5,hello"), "\"hello\"");
    EXPECT_EQ(Value("8,4,1010"), "bit-string 1010");
    EXPECT_EQ(Value("9,1,2"), "enumerated 2");
    EXPECT_EQ(Value("10,9,515032024"), "date 2024-03-15");
    EXPECT_EQ(Value("11,8,06300000"), "time 06:30");
    EXPECT_EQ(Value("12,0,1234"), "object-identifier analog-input 1234");
    EXPECT_EQ(Value("0,1,0"), "null");
    EXPECT_EQ(Value("7,0,"), "\"\"");
    EXPECT_EQ(Value("9,2,-5"), "enumerated 4294967291");
    EXPECT_EQ(Value("4,3,nan"), "nan");
}

TEST(ReadSchedule, FindsTheEndOfATextByItsLength) {
    EXPECT_EQ(Week("08000000,7,8,a,b;c;;d,09000000,1,1,0;;;;;;;"), "Mon 08:00 \"a,b;c;;d\", 09:00 false");
    EXPECT_EQ(WeekNotes("08000000,7,8,a,b;c;;d;;;;;;;"), "");
    EXPECT_EQ(Week("08000000,7,3,hello;;;;;;;"), "Mon 08:00 \"hello\"");
    EXPECT_EQ(WeekNotes("08000000,7,3,hello;;;;;;;"),
              "Monday 08:00: the length is 3, and the value ends after 5 characters");
}

TEST(ReadSchedule, NotesANullThatTheDriverLeavesOut) {
    EXPECT_EQ(Week(";,09000000,4,8,1.000000;;;;;;"), "Tue 09:00 1");
    EXPECT_EQ(WeekNotes(";,09000000,4,8,1.000000;;;;;;"),
              "Tuesday: its first entry is Null in the device; the driver's text leaves such entries out");
}

TEST(ReadSchedule, ReadsUnspecifiedPartsOfTimes) {
    EXPECT_EQ(Week("255300000,1,1,1;;;;;;;"), "Mon *:30 true");
    EXPECT_EQ(Week("0630255255,1,1,1;;;;;;;"), "Mon 06:30:*.* true");
    EXPECT_EQ(Week("255255255255,1,1,1;;;;;;;"), "Mon *:*:*.* true");
    EXPECT_EQ(WeekNotes("062550255,1,1,1;;;;;;;"),
              "Monday 06:25:50.*: read as 06:25:50.*; it may also mean 06:*:02.55: the driver's text is the "
              "same for both");
    EXPECT_EQ(Value("11,9,252525255"), "time *:*:*.*");
    EXPECT_EQ(Value("11,9,063025255"), "time 06:30:*.*");
    EXPECT_EQ(Value("11,8,06252500"), "time 06:25:25");
}

TEST(ReadSchedule, ReadsTheExampleOfTheDocument) {
    EXPECT_EQ(Days("0,515032024,16,08000000,1,1,1,17000000,1,1,0;3,7,10,08000000,4,9,20.000000;"
                   "2,**12,5,12000000,,13000000,9,1,1;"),
              "2024-03-15 (priority 16) 08:00 true, 17:00 false; calendar 7 (priority 10) 08:00 20; "
              "first Tuesday (priority 5) 12:00 null, 13:00 enumerated 1");
    EXPECT_EQ(Days(""), "none");
    EXPECT_EQ(Days("1,113072026,521082026,3,00000000,4,9,16.000000;"),
              "2026-07-13 to 2026-08-21 (priority 3) 00:00 16");
    EXPECT_EQ(Days("2,1265,16,12000000,;"), "last Friday in December (priority 16) 12:00 null");
    EXPECT_EQ(Days("2,255255255,16,12000000,;"), "every day (priority 16) 12:00 null");
    EXPECT_EQ(Days("2,132556,16,12000000,;"), "every Saturday in odd months (priority 16) 12:00 null");
}

TEST(ReadSchedule, DecidesCutDigitsOfADateOrSaysThatItCannot) {
    EXPECT_EQ(Date("524122026"), "Friday 2026-12-24") << "a Thursday: no day at all";
    EXPECT_EQ(Date("424122026"), "2026-12-24");
    EXPECT_EQ(Date("224122026"), "2026-12-24") << "no Tuesday, so any weekday";
    EXPECT_EQ(Date("222122026"), "2026-12-22") << "a Tuesday";
    EXPECT_EQ(Date("525122026"), "2026-12-25 ?") << "or every Friday of the month";
    EXPECT_EQ(Date("425122026"), "Thursday 2026-12-*") << "the 25th is a Friday";
    EXPECT_EQ(Date("225122155"), "*-12-25 ?");
    EXPECT_EQ(Date("225252155"), "*-*-* ?");
    EXPECT_EQ(Date("525252155"), "Friday *-*-* ?");
    EXPECT_EQ(Date("232132155"), "*-odd-last ?");
    EXPECT_EQ(DayNotes("0,225122155,16,12000000,;"),
              "event 1: read as every 25 December; it may also mean every day in December, or only the "
              "Tuesdays of it: the driver's text is the same for both");
    EXPECT_EQ(
        DayNotes("0,525122026,16,12000000,;"),
        "event 1: read as 25 December 2026; it may also mean every Friday in December 2026: the driver's "
        "text is the same for both");
    EXPECT_EQ(
        DayNotes("0,224122155,16,12000000,;"),
        "event 1: read as every 24 December; it may also mean only the Tuesdays of it: the driver's text "
        "is the same for both");
    EXPECT_EQ(DayNotes("0,525122155,16,12000000,;"),
              "event 1: read as every Friday in December; it may also mean every 25 December, if it is "
              "a Friday: the driver's text is the same for both");
}

TEST(ReadSchedule, FindsEventsThatFollowWithoutASemicolon) {
    std::string const note =
        "event 1: the device has an event without entries after it, which the driver's text leaves out";
    std::string const expected = "2024-03-15 (priority 16) 08:00 true; 2024-03-16 (priority 15) 09:00 false";
    EXPECT_EQ(Days("0,515032024,16,08000000,1,1,10,616032024,15,09000000,1,1,0;"), expected);
    EXPECT_EQ(DayNotes("0,515032024,16,08000000,1,1,10,616032024,15,09000000,1,1,0;"), note);
    EXPECT_EQ(Days("0,515032024,16,08000000,0,616032024,15,09000000,1,1,0;"),
              "2024-03-15 (priority 16) 08:00 null; 2024-03-16 (priority 15) 09:00 false");
    EXPECT_EQ(Days("3,7,16,08000000,12,2,50,616032024,15,09000000,1,1,0;"),
              "calendar 7 (priority 16) 08:00 object-identifier analog-value 5; 2024-03-16 (priority 15) "
              "09:00 false");
    EXPECT_EQ(Days("3,7,16,08000000,4,9,20.0000003,7,10,09000000,1,1,0;"),
              "calendar 7 (priority 16) 08:00 20; calendar 7 (priority 10) 09:00 false");
    EXPECT_EQ(DayNotes("3,7,16,08000000,1,1,1"), note);
}

TEST(ReadSchedule, SaysWhatANullBeforeACalendarLeavesOpen) {
    EXPECT_EQ(Days("3,7,16,08000000,3,2,10,09000000,1,1,0;"),
              "calendar 7 (priority 16) 08:00 signed 10, 09:00 false");
    EXPECT_EQ(DayNotes("3,7,16,08000000,3,2,10,09000000,1,1,0;"),
              "event 1, 08:00: this may also be Null, with an event on the days of a calendar after it: the "
              "driver's text is the same for both");
    EXPECT_EQ(Days("3,7,16,08000000,3,9,10,09000000,1,1,0;"),
              "calendar 7 (priority 16) 08:00 null; calendar 9 (priority 10) 09:00 false");
}

TEST(ReadSchedule, SaysThatASignMayBeLost) {
    EXPECT_EQ(WeekNotes("08000000,3,3,249;;;;;;;"),
              "Monday 08:00: the number can also be -7: the driver loses the sign");
    EXPECT_EQ(WeekNotes("08000000,3,1,7;;;;;;;"), "");
}

TEST(ReadSchedule, NamesThePlaceOfAMistake) {
    EXPECT_EQ(Week("08000000,4,9,21.500000;"),
              "\"08000000,4,9,21.500000;\" is not valid; expected seven days, each with ';' at its end");
    EXPECT_EQ(Week(";;;;;;;;"), "\";\" is not valid; expected seven days, each with ';' at its end");
    EXPECT_EQ(Week(";;0800,1,1,1;;;;;"),
              "Wednesday: \"0800\" is not valid; expected a time of eight digits, such as 06000000");
    EXPECT_EQ(Week("08000000,13,1,1;;;;;;;"),
              "Monday 08:00: \"13\" is not valid; expected the number of a type from 0 to 12");
    EXPECT_EQ(Week("08000000,4,3,abc;;;;;;;"),
              "Monday 08:00: \"abc\" is not valid; expected a number such as 21.5");
    EXPECT_EQ(Week("08000000,12,0,4194304;;;;;;;"),
              "Monday 08:00: \"4194304\" is not valid; expected the instance of an object, and its type as "
              "the length");
    EXPECT_EQ(Days("2,,16,08000000,1,1,1;"),
              "event 1: \"\" is not valid; expected month, week and weekday, such as 1265");
    EXPECT_EQ(Days("9,1,16,08000000,1,1,1;"),
              "event 1: \"9\" is not valid; expected 0, 1, 2 or 3 for the form of its period");
    EXPECT_EQ(Days("3,7,x,08000000,1,1,1;"), "event 1: \"x\" is not valid; expected a priority from 1 to 16");
}

TEST(ReadSchedule, KeepsWhatTheStandardDoesNotAllowAndNotesIt) {
    EXPECT_EQ(WeekNotes("24000000,1,1,1;;;;;;;"), "Monday 24:00: hour 24 is not one of 0 to 23");
    EXPECT_EQ(DayNotes("3,7,17,08000000,1,1,1;"), "event 1: priority 17 is not one of 1 to 16");
}

TEST(ReadSchedule, BoundsItsNotesAndItsText) {
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += "24000000,1,1,1,";
    }
    text.back() = ';';
    EXPECT_EQ(ReadWeekly(text + ";;;;;;").notes.size(), 200u);
    EXPECT_EQ(Week(std::string(LongestScheduleText + 1, ';')),
              "the text has 1048577 octets; the longest has 1048576");
}
