#include "ScheduleForPeople.h"

#include <gtest/gtest.h>

using namespace workbench;

namespace {

ValueNames const Celsius{"°C", {}, {}};
ValueNames const Switch{"", {"off", "on"}, {}};
ValueNames const Stages{"", {"off", "stage 1", "stage 2"}, {}};

// What is understood, or the mistake without its example.
template <typename Schedule>
std::string Result(TypedSchedule<Schedule> const& typed, std::string const& text) {
    return typed.schedule ? text : typed.mistake.substr(0, typed.mistake.find("; example: "));
}

std::string Week(std::string const& text, ValueNames const& names = Celsius) {
    auto const typed = WeeklyOfPeople(text, names);
    return Result(typed, typed.schedule ? WeeklyForPeople(*typed.schedule, names) : "");
}

std::string Days(std::string const& text, ValueNames const& names = Celsius) {
    auto const typed = ExceptionOfPeople(text, names);
    return Result(typed, typed.schedule ? ExceptionForPeople(*typed.schedule, names) : "");
}

std::string Value(std::string const& text, ValueNames const& names = Celsius) {
    std::string const week = Week("Mon 06:00 " + text, names);
    return week.substr(0, 10) == "Mon 06:00 " ? week.substr(10) : week;
}

}  // namespace

TEST(ScheduleForPeople, GroupsDaysWithTheSameEntries) {
    EXPECT_EQ(Week("Mon 06:00 21.5 °C, 20:00 17 °C; Tue-Fri 06:00 21.5, 20:00 17"),
              "Mon-Fri 06:00 21.5 °C, 20:00 17 °C");
    EXPECT_EQ(Week("Monday, wed 06:00 1; TUE 07:00 2; Sat to Sun 06:00 1"),
              "Mon, Wed, Sat-Sun 06:00 1 °C; Tue 07:00 2 °C");
    EXPECT_EQ(Week("daily 06:00 1;"), "Mon-Sun 06:00 1 °C");
    EXPECT_EQ(Week("Mon -; Tue none; Wed 06:00 1"), "Wed 06:00 1 °C");
    EXPECT_EQ(Week("Mon-Sun none"), "Mon-Sun none");
}

TEST(ScheduleForPeople, NamesThePartOfAWeekThatIsWrong) {
    EXPECT_EQ(Week("Moon 06:00 1"),
              "\"Moon\" is not a day; expected days such as Mon, Mon-Fri or Sat, Sun, or daily");
    EXPECT_EQ(Week("06:00 1"),
              "\"06:00\" is not a day; expected days such as Mon, Mon-Fri or Sat, Sun, or daily");
    EXPECT_EQ(Week("Fri-Mon 06:00 1"),
              "Friday to Monday goes over the end of the week; name both parts, such as Fri-Sun, Mon");
    EXPECT_EQ(Week("Mon 06:00 1; Mon 20:00 2"),
              "Monday is there twice; write all its entries after it, with \",\" between");
    EXPECT_EQ(Week("Mon 25:00 1"),
              "\"25:00\" in \"25:00 1\" is not a time; expected an entry such as 06:00 21.5, with \",\" "
              "between entries");
    EXPECT_EQ(Week("Mon 06:00"), "\"06:00\" has no value; expected an entry such as 06:00 21.5");
    EXPECT_EQ(Week("Mon 06:00 21,5"),
              "\"5\" is not a time; expected an entry such as 06:00 21.5, with \",\" between entries and "
              "\".\" before decimals");
    EXPECT_EQ(Week(""), "the text names no day; expected days and entries, or Mon-Sun none");
}

TEST(ScheduleForPeople, TakesNumbersWithTheirUnit) {
    EXPECT_EQ(Value("21.5"), "21.5 °C");
    EXPECT_EQ(Value("21.5°C"), "21.5 °C");
    EXPECT_EQ(Value("21.50 degC"), "21.5 °C");
    EXPECT_EQ(Value("21.5 degrees celsius"), "21.5 °C");
    EXPECT_EQ(Value("1e3"), "1000 °C");
    EXPECT_EQ(Value("21.5 °F"), "\"°F\" is not the unit; allowed is \"°C\", or the number alone");
    EXPECT_EQ(
        Value("21.5 °C", {}),
        "\"°C\" after the number is not allowed: the project has no unit for it; type the number alone");
}

TEST(ScheduleForPeople, TakesTheNameOfAType) {
    EXPECT_EQ(Value("unsigned 2"), "unsigned 2 °C");
    EXPECT_EQ(Value("double 2 °C"), "double 2 °C");
    EXPECT_EQ(Value("date 2026-12-25"), "date 2026-12-25");
    EXPECT_EQ(Value("object-identifier analog-value 3"), "object-identifier analog-value 3");
    EXPECT_EQ(Value("\"hello, world; \\x22\""), "\"hello, world; \\x22\"");
    EXPECT_EQ(Value("null"), "null");
    EXPECT_EQ(Value("true"), "true");
    EXPECT_EQ(Value("unsigned -2"),
              "\"-2\" is not a value of type unsigned; expected a whole number from 0 to 4294967295");
    EXPECT_EQ(Value("character-string hello"), "\"hello\" is not a text; write it in quotation marks");
    EXPECT_EQ(Value("warm"),
              "\"warm\" is not a value; expected a number such as 21.5, null, or the name of a type and a "
              "value, such as "
              "unsigned 2");
    EXPECT_EQ(Value("ture").substr(Value("ture").size() - 23), " (did you mean \"true\"?)");
}

TEST(ScheduleForPeople, TakesStateTexts) {
    EXPECT_EQ(Value("on", Switch), "enumerated 1 (on)");
    EXPECT_EQ(Value("ON", Switch), "enumerated 1 (on)");
    EXPECT_EQ(Value("on", {"", {"off", "on"}, ScheduleValueType::Boolean}), "true (on)");
    EXPECT_EQ(Value("boolean off", Switch), "false (off)");
    EXPECT_EQ(Value("stage 2", Stages), "unsigned 3 (stage 2)");
    EXPECT_EQ(Value("3 (stage 2)", {"", Stages.stateTexts, ScheduleValueType::Unsigned}), "3 (stage 2)");
    EXPECT_EQ(Value("unsigned 3 (stage 1)", Stages),
              "\"(stage 1)\" is not the state of 3, which is \"stage 2\"; the number alone will do");
    EXPECT_EQ(Value("stage 3", Stages),
              "\"stage 3\" is not a value; expected a number such as 21.5, a state (\"off\", \"stage 1\", "
              "\"stage 2\"), "
              "null, or the name of a type and a value, such as unsigned 2 (did you mean \"stage 1\"?)");
}

TEST(ScheduleForPeople, TakesPeriodsAsDatesAndInWords) {
    EXPECT_EQ(Days("2026-12-25 (priority 10) 00:00 16 °C"), "2026-12-25 (priority 10) 00:00 16 °C");
    EXPECT_EQ(Days("25 December 2026 00:00 16"), "2026-12-25 (priority 16) 00:00 16 °C");
    EXPECT_EQ(Days("every 25 Dec 00:00 16"), "*-12-25 (priority 16) 00:00 16 °C");
    EXPECT_EQ(Days("13 July 2026 to 2026-08-21 00:00 16"),
              "2026-07-13 to 2026-08-21 (priority 16) 00:00 16 °C");
    EXPECT_EQ(Days("every last Friday in December 00:00 16"),
              "last Friday in December (priority 16) 00:00 16 °C");
    EXPECT_EQ(Days("first mon of odd months 00:00 16"),
              "first Monday in odd months (priority 16) 00:00 16 °C");
    EXPECT_EQ(Days("week 2 in June 00:00 16"), "week 2 in June (priority 16) 00:00 16 °C");
    EXPECT_EQ(Days("Friday *-12-* none"), "Friday *-12-* (priority 16) none");
    EXPECT_EQ(Days("the days of calendar 7 00:00 16"), "calendar 7 (priority 16) 00:00 16 °C");
    EXPECT_EQ(Days("2026-even-last 00:00 16"), "2026-even-last (priority 16) 00:00 16 °C");
    EXPECT_EQ(Days("none"), "none");
}

TEST(ScheduleForPeople, NamesThePartOfAnEventThatIsWrong) {
    EXPECT_EQ(Days("Thursday 2026-12-25 00:00 16"), "25 December 2026 is a Friday, not a Thursday");
    EXPECT_EQ(Days("31 April 2026 00:00 16"), "April 2026 has no day 31");
    EXPECT_EQ(Days("2026-08-21 to 2026-07-13 00:00 16"),
              "\"2026-08-21 to 2026-07-13\" ends before it begins; put the earlier date first");
    EXPECT_EQ(Days("2026-12-25 (priority 17) 00:00 16"),
              "\"17\" is not a priority; expected (priority 1), the highest, to (priority 16)");
    EXPECT_EQ(Days("2026-12-25"),
              "\"2026-12-25\" has no entries; expected a time and a value after the period");
    EXPECT_EQ(Days("week 10 in June 00:00 1"), "week 10 is not one of 1 to 9");
}

TEST(ScheduleForPeople, KnowsATextOfTheDriverByItsBeginning) {
    for (char const* text : {"06000000,4,9,21.500000;;;;;;;", ";;;;;;;", ",06000000,1,1,1;;;;;;;",
                             "0,525122026,10,", "3,7,10,00000000,4,9,16.000000;"}) {
        EXPECT_TRUE(IsDriverText(text)) << text;
    }
    for (char const* text : {"Mon 06:00 1", "2026-12-25 00:00 16", "*-12-25 00:00 16", "25 December 00:00 1",
                             "none", "", "calendar 7 00:00 1"}) {
        EXPECT_FALSE(IsDriverText(text)) << text;
    }
}

TEST(ScheduleForPeople, SaysThatDaysHaveNoEntries) {
    std::string const mistake = WeeklyOfPeople("Mon-Fri", {}).mistake;
    EXPECT_EQ(mistake.substr(0, mistake.find("; example")),
              "no entries after the days; expected entries such as 06:00 21.5, or none");
    EXPECT_EQ(WeeklyOfPeople("Mon-Fri none", {}).mistake, "");
}
