#include "ScheduleJson.h"

#include "PeriodWords.h"
#include "ScheduleNames.h"
#include "ScheduleParts.h"

namespace workbench {

namespace {

void WriteNumber(JsonWriter& writer, char const* name, std::optional<unsigned> number) {
    writer.Key(name);
    if (number) {
        writer.Uint(*number);
    } else {
        writer.Null();
    }
}

void WriteValueFields(JsonWriter& writer, ScheduleValue const& value, ValueNames const& names) {
    WriteField(writer, "type", TypeWord(value.type));
    WriteField(writer, "value", value.text);
    WriteField(writer, "words", ValueWords(value, names));
}

void WriteEntries(JsonWriter& writer, std::vector<ScheduleEntry> const& entries, ValueNames const& names) {
    writer.StartArray();
    for (ScheduleEntry const& entry : entries) {
        writer.StartObject();
        WriteField(writer, "time", PartText(entry.time));
        WriteValueFields(writer, entry.value, names);
        writer.EndObject();
    }
    writer.EndArray();
}

void WriteDate(JsonWriter& writer, char const* name, ScheduleDate const& date) {
    writer.Key(name);
    writer.StartObject();
    WriteNumber(writer, "year", date.year);
    WriteNumber(writer, "month", date.month);
    WriteNumber(writer, "day", date.day);
    WriteNumber(writer, "weekday", date.weekday);
    writer.EndObject();
}

void WritePeriod(JsonWriter& writer, Period const& period) {
    writer.StartObject();
    if (auto const* const date = std::get_if<ScheduleDate>(&period)) {
        WriteField(writer, "kind", "date");
        WriteDate(writer, "date", *date);
    } else if (auto const* const range = std::get_if<DateRange>(&period)) {
        WriteField(writer, "kind", "range");
        WriteDate(writer, "from", range->from);
        WriteDate(writer, "to", range->to);
    } else if (auto const* const days = std::get_if<WeekAndDay>(&period)) {
        WriteField(writer, "kind", "week-and-day");
        WriteNumber(writer, "month", days->month);
        WriteNumber(writer, "week", days->week);
        WriteNumber(writer, "weekday", days->weekday);
    } else {
        WriteField(writer, "kind", "calendar");
        WriteNumber(writer, "instance", std::get<CalendarReference>(period).instance);
    }
    writer.EndObject();
}

}  // namespace

void WriteScheduleValue(JsonWriter& writer, ScheduleValue const& value, ValueNames const& names) {
    writer.StartObject();
    WriteValueFields(writer, value, names);
    writer.EndObject();
}

void WriteSchedule(JsonWriter& writer, WeeklySchedule const& schedule, ValueNames const& names) {
    writer.StartObject();
    WriteField(writer, "kind", "weekly");
    writer.Key("days");
    writer.StartArray();
    for (auto const& day : schedule.days) {
        WriteEntries(writer, day, names);
    }
    writer.EndArray();
    writer.EndObject();
}

void WriteSchedule(JsonWriter& writer, ExceptionSchedule const& schedule, ValueNames const& names) {
    writer.StartObject();
    WriteField(writer, "kind", "exception");
    writer.Key("events");
    writer.StartArray();
    for (SpecialEvent const& event : schedule.events) {
        writer.StartObject();
        writer.Key("period");
        WritePeriod(writer, event.period);
        writer.Key("priority");
        writer.Uint(event.priority);
        WriteField(writer, "words", PeriodWords(event.period));
        writer.Key("entries");
        WriteEntries(writer, event.entries, names);
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
}

std::string DayText(ScheduleDate const& day) {
    return PartText(ScheduleDate{day.year, day.month, day.day, {}});
}

}  // namespace workbench
