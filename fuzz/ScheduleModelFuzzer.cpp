// Schedules of the workbench: a text of the driver, a text that a person types, and a model in JSON. What is
// read is composed, written for people and as JSON, and read again.
#include <cstddef>
#include <cstdint>
#include <string>

#include "ComposeSchedule.h"
#include "InForce.h"
#include "PeriodWords.h"
#include "ReadSchedule.h"
#include "Require.h"
#include "ScheduleCalendar.h"
#include "ScheduleChanges.h"
#include "ScheduleForPeople.h"
#include "ScheduleJson.h"
#include "ScheduleLosses.h"

using fuzz::Require;
using namespace workbench;

namespace {

ValueNames const Names{"°C", {"off", "on", "a,b"}, {}};

ScheduleReading<WeeklySchedule> ReadLike(WeeklySchedule const&, std::string const& text) {
    return ReadWeekly(text);
}
ScheduleReading<ExceptionSchedule> ReadLike(ExceptionSchedule const&, std::string const& text) {
    return ReadException(text);
}

ScheduleInForce InForceOf(WeeklySchedule const& schedule, ScheduleInstant const& now) {
    return InForce(&schedule, nullptr, now, Names);
}
ScheduleInForce InForceOf(ExceptionSchedule const& schedule, ScheduleInstant const& now) {
    return InForce(nullptr, &schedule, now, Names);
}

void RequireLine(std::string const& text) {
    for (unsigned char const c : text) {
        Require(c >= 0x20 && c != 0x7F, "what is said is one line");
    }
}

void RequireWords(WeeklySchedule const& schedule) {
    for (auto const& day : schedule.days) {
        for (ScheduleEntry const& entry : day) {
            RequireLine(EntryWords(entry, Names));
        }
    }
}

void RequireWords(ExceptionSchedule const& schedule) {
    for (SpecialEvent const& event : schedule.events) {
        RequireLine(PeriodWords(event.period));
        Require(DaysOf(event, 2026).size() <= 365, "a year has its days");
        for (ScheduleEntry const& entry : event.entries) {
            RequireLine(EntryWords(entry, Names));
        }
    }
}

template <typename Schedule>
std::string Json(Schedule const& schedule) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    WriteSchedule(writer, schedule, Names);
    return buffer.GetString();
}

// A composed text that nothing is lost of is read as the same schedule.
template <typename Schedule>
void RequireComposed(Schedule const& schedule) {
    ComposedSchedule const composed = Compose(schedule);
    Require(composed.text.empty() || composed.mistakes.empty(), "a text has no mistakes");
    for (ScheduleRemark const& mistake : composed.mistakes) {
        RequireLine(RemarkText(mistake));
    }
    auto const losses = Losses(schedule);
    if (!composed.mistakes.empty()) {
        return;
    }
    auto const read = ReadLike(schedule, composed.text);
    Require(read.schedule.has_value(), "what is composed can be read");
    bool const isRead = SameSchedule(*read.schedule, schedule);
    Require(isRead || !losses.empty(), "what is composed is read as the same, but for losses");
}

template <typename Schedule>
void Check(Schedule const& schedule) {
    RequireComposed(schedule);
    RequireWords(schedule);
    Require(Changes(schedule, schedule, Names).empty(), "a schedule does not differ from itself");
    Require(SameSchedule(schedule, Normalised(schedule)), "a normalised schedule is the same");
    ScheduleInForce const found = InForceOf(schedule, {CompleteDate(2026, 12, 25), {12u, 0u, 0u, 0u}});
    Require(found.now.has_value(), "something is in force");
    rapidjson::Document document;
    document.Parse(Json(Normalised(schedule)).c_str());
    Require(!document.HasParseError(), "a schedule is JSON");
    ScheduleOfJson const read = ReadScheduleJson(document);
    if (auto const* const again = std::get_if<Schedule>(&read.schedule)) {
        Require(Json(Normalised(*again)) == Json(Normalised(schedule)), "JSON is read as the same schedule");
    } else {
        RequireLine(read.mistake);
    }
}

template <typename Reading>
void CheckReading(Reading const& reading) {
    for (ScheduleRemark const& note : reading.notes) {
        RequireLine(RemarkText(note));
    }
    if (reading.schedule) {
        Check(*reading.schedule);
    } else {
        RequireLine(RemarkText(reading.mistake));
        Require(!reading.mistake.reason.empty(), "what cannot be read has a mistake");
    }
}

template <typename Typed>
void CheckTyped(Typed const& typed) {
    if (typed.schedule) {
        Check(*typed.schedule);
    } else {
        RequireLine(typed.mistake);
        Require(!typed.mistake.empty(), "what is not understood has a mistake");
    }
}

void CheckJson(std::string const& text) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag>(text.data(), text.size());
    if (document.HasParseError()) {
        return;
    }
    ScheduleOfJson const read = ReadScheduleJson(document);
    if (auto const* const weekly = std::get_if<WeeklySchedule>(&read.schedule)) {
        Check(*weekly);
    } else if (auto const* const exception = std::get_if<ExceptionSchedule>(&read.schedule)) {
        Check(*exception);
    } else {
        RequireLine(read.mistake);
    }
}

}  // namespace

// The input is used in all three ways.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text(data, data + size);
    CheckReading(ReadWeekly(text));
    CheckReading(ReadException(text));
    CheckTyped(WeeklyOfPeople(text, Names));
    CheckTyped(ExceptionOfPeople(text, Names));
    CheckJson(text);
    return 0;
}
