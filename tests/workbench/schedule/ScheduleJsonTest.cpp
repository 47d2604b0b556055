#include "ScheduleJson.h"

#include <gtest/gtest.h>

#include "ScheduleForPeople.h"

using namespace workbench;

namespace {

ValueNames const Celsius{"°C", {}, {}};

template <typename Schedule>
std::string Json(Schedule const& schedule) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    WriteSchedule(writer, schedule, Celsius);
    return buffer.GetString();
}

// The schedule for people, or the mistake.
std::string Read(std::string const& json) {
    rapidjson::Document document;
    document.Parse(json.c_str());
    EXPECT_FALSE(document.HasParseError()) << json;
    ScheduleOfJson const read = ReadScheduleJson(document);
    if (auto const* const weekly = std::get_if<WeeklySchedule>(&read.schedule)) {
        return WeeklyForPeople(*weekly, {});
    }
    auto const* const exception = std::get_if<ExceptionSchedule>(&read.schedule);
    return exception ? ExceptionForPeople(*exception, {}) : read.mistake;
}

std::string ReadEvent(std::string const& period, std::string const& priority = "10") {
    return Read(R"({"kind":"exception","events":[{"period":)" + period + R"(,"priority":)" + priority +
                R"(,"entries":[{"time":"06:00","type":"null"}]}]})");
}

std::string ReadEntry(std::string const& entry) {
    return Read(R"({"kind":"weekly","days":[[)" + entry + "],[],[],[],[],[],[]]}");
}

}  // namespace

TEST(ScheduleJson, HasAWeek) {
    EXPECT_EQ(
        Json(*WeeklyOfPeople("Mon 06:00 21.5; Sun 20:00:30.05 null", Celsius).schedule),
        R"({"kind":"weekly","days":[[{"time":"06:00","type":"real","value":"21.5","words":"21.5 °C"}],[],[],[],[],[],)"
        R"([{"time":"20:00:30.05","type":"null","value":"","words":"null"}]]})");
}

TEST(ScheduleJson, HasEachFormOfAPeriod) {
    auto const json = [](char const* period) {
        std::string const text = Json(*ExceptionOfPeople(std::string(period) + " none", {}).schedule);
        std::size_t const begin = text.find("{\"period\":") + 10;
        return text.substr(begin, text.find(",\"priority\"") - begin);
    };
    EXPECT_EQ(json("2026-12-25"), R"({"kind":"date","date":{"year":2026,"month":12,"day":25,"weekday":5}})");
    EXPECT_EQ(json("2026-12-* to *-*-*"),
              R"({"kind":"range","from":{"year":2026,"month":12,"day":null,"weekday":null},)"
              R"("to":{"year":null,"month":null,"day":null,"weekday":null}})");
    EXPECT_EQ(json("last Friday"), R"({"kind":"week-and-day","month":null,"week":6,"weekday":5})");
    EXPECT_EQ(json("calendar 7"), R"({"kind":"calendar","instance":7})");
}

TEST(ScheduleJson, HasThePriorityAndTheWordsOfAnEvent) {
    EXPECT_EQ(
        Json(*ExceptionOfPeople("last Friday in December (priority 3) none", {}).schedule),
        R"({"kind":"exception","events":[{"period":{"kind":"week-and-day","month":12,"week":6,"weekday":5},)"
        R"("priority":3,"words":"every last Friday in December","entries":[]}]})");
}

TEST(ScheduleJson, IsRead) {
    EXPECT_EQ(ReadEntry(R"({"time":"*:30","type":"real","value":"21.50","words":"no matter"})"),
              "Mon *:30 21.5");
    EXPECT_EQ(ReadEvent(R"({"kind":"date","date":{"year":2026,"month":12,"day":25}})"),
              "2026-12-25 (priority 10) 06:00 null");
    EXPECT_EQ(
        ReadEvent(R"({"kind":"range","from":{"year":2026,"month":12,"day":25,"weekday":null},"to":{}})"),
        "2026-12-25 to *-*-* (priority 10) 06:00 null");
    EXPECT_EQ(ReadEvent(R"({"kind":"week-and-day","month":12,"week":6,"weekday":5})"),
              "last Friday in December (priority 10) 06:00 null");
    EXPECT_EQ(ReadEvent(R"({"kind":"calendar","instance":7})"), "calendar 7 (priority 10) 06:00 null");
}

TEST(ScheduleJson, NamesTheMemberThatIsWrong) {
    EXPECT_EQ(Read("[]"), "expected an object");
    EXPECT_EQ(Read("{}"), "kind: is missing");
    EXPECT_EQ(Read(R"({"kind":"daily"})"), "kind: \"daily\" is not a schedule; expected weekly or exception");
    EXPECT_EQ(Read(R"({"kind":"weekly","days":[[]]})"), "days: has 1 lists; expected seven, Monday first");
    EXPECT_EQ(ReadEntry("5"), "days[0][0]: expected an object");
    EXPECT_EQ(ReadEntry(R"({"time":"25:00","type":"real","value":"1"})"),
              "days[0][0].time: \"25:00\" is not a time; expected a time such as 06:00");
    EXPECT_EQ(ReadEntry(R"({"time":"06:00","type":"reel","value":"1"})"),
              "days[0][0].type: \"reel\" is not a type (did you mean \"real\"?)");
    EXPECT_EQ(ReadEntry(R"({"time":"06:00","type":"real","value":1})"), "days[0][0].value: expected a text");
    EXPECT_EQ(ReadEntry(R"({"time":"06:00","type":"real","value":"warm"})"),
              "days[0][0].value: \"warm\" is not a value of type real; expected a number such as 21.5");
    EXPECT_EQ(ReadEvent(R"({"kind":"date","date":{"month":15}})"),
              "events[0].period.date: month 15 is not one of 1 to 14");
    EXPECT_EQ(ReadEvent(R"({"kind":"date","date":{"day":-1}})"),
              "events[0].period.date.day: expected a whole number");
    EXPECT_EQ(
        ReadEvent(R"({"kind":"holiday"})"),
        "events[0].period.kind: \"holiday\" is not a period; expected date, range, week-and-day or calendar");
    EXPECT_EQ(ReadEvent(R"({"kind":"calendar","instance":4194304})"),
              "events[0].period: calendar 4194304 is not one of 0 to 4194303");
    EXPECT_EQ(ReadEvent(R"({"kind":"calendar","instance":7})", "17"),
              "events[0]: priority 17 is not one of 1 to 16");
}

TEST(ScheduleJson, BoundsTheNumberOfEntries) {
    std::string events;
    for (int i = 0; i < 10001; ++i) {
        events +=
            std::string(i == 0 ? "" : ",") +
            R"({"period":{"kind":"calendar","instance":7},"priority":1,"entries":[{"time":"06:00","type":"null"}]})";
    }
    EXPECT_EQ(Read(R"({"kind":"exception","events":[)" + events + "]}"),
              "the schedule has more than 20000 entries and events");
}
