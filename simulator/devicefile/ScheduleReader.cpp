#include "ScheduleReader.h"

#include "ConstructedReader.h"
#include "Content.h"
#include "Mistake.h"
#include "PrimitiveReader.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

constexpr std::uint16_t CalendarType = 6;

// A time-value: {"08:00", real(21.5)}. Values of schedules do not move.
void WriteEntry(ScriptValue const& entry, TagWriter& writer) {
    if (checks::List(entry).size() != 2) {
        throw Mistake("an entry must be a time and a value");
    }
    writer.Application(ApplicationTag::Time, content::Time(checks::Time(entry.list[0])));
    ReadPrimitive(Datatype::Any, entry.list[1])->Encode(writer, {});
}

void WriteEntries(ScriptValue const& entries, std::uint8_t tagNumber, TagWriter& writer) {
    writer.Opening(tagNumber);
    if (!entries.IsNil()) {
        for (ScriptValue const& entry : checks::List(entries)) {
            WriteEntry(entry, writer);
        }
    }
    writer.Closing(tagNumber);
}

// BACnetWeekNDay: month, week of the month, day of the week.
Octets WeekNDay(ScriptValue const& value) {
    checks::Fields(value, {"month", "week", "day"});
    struct Part {
        char const* name;
        std::uint32_t highest;
    };
    Octets octets;
    for (Part const& part : {Part{"month", 14}, Part{"week", 9}, Part{"day", 7}}) {
        ScriptValue const& number = value[part.name];
        octets.push_back(
            static_cast<char>(number.IsNil() ? Unspecified : checks::UnsignedUpTo(number, part.highest)));
    }
    return octets;
}

// The choices of BACnetCalendarEntry, in a BACnetSpecialEvent's own choice 0.
void WriteCalendarEntry(ScriptValue const& event, TagWriter& writer) {
    writer.Opening(0);
    if (!event["date"].IsNil()) {
        writer.Context(0, content::Date(checks::Date(event["date"])));
    } else if (!event["week_n_day"].IsNil()) {
        writer.Context(2, WeekNDay(event["week_n_day"]));
    } else {
        writer.Opening(1);
        WriteDateRange(event, writer);
        writer.Closing(1);
    }
    writer.Closing(0);
}

void ExpectOnePeriod(ScriptValue const& event) {
    int const count = !event["date"].IsNil() + (!event["from"].IsNil() || !event["to"].IsNil()) +
                      !event["week_n_day"].IsNil() + !event["calendar"].IsNil();
    if (count != 1) {
        throw Mistake("an event must have one of date, from and to, week_n_day, calendar");
    }
}

ValuePtr ReadEvent(ScriptValue const& event) {
    checks::Fields(event, {"date", "from", "to", "week_n_day", "calendar", "priority", "entries"});
    ExpectOnePeriod(event);
    TagWriter writer;
    if (!event["calendar"].IsNil()) {
        std::uint32_t const instance = checks::UnsignedUpTo(event["calendar"], ObjectId::LastInstance);
        writer.Context(1, content::ObjectIdentifier({CalendarType, instance}));
    } else {
        WriteCalendarEntry(event, writer);
    }
    WriteEntries(event["entries"], 2, writer);
    ScriptValue const& priority = event["priority"];
    writer.Context(3, content::UnsignedNumber(priority.IsNil() ? 16 : checks::UnsignedUpTo(priority, 16)));
    return std::make_shared<FixedValue>(writer.Take());
}

}  // namespace

std::vector<ValuePtr> ReadWeeklySchedule(ScriptValue const& value) {
    checks::Fields(value, {"monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"});
    std::vector<ValuePtr> days;
    for (char const* day : {"monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"}) {
        try {
            TagWriter writer;
            WriteEntries(value[day], 0, writer);
            days.push_back(std::make_shared<FixedValue>(writer.Take()));
        } catch (Mistake const& mistake) {
            throw mistake.In(day);
        }
    }
    return days;
}

std::vector<ValuePtr> ReadExceptionSchedule(ScriptValue const& value) {
    std::vector<ValuePtr> events;
    for (ScriptValue const& event : checks::List(value)) {
        try {
            events.push_back(ReadEvent(event));
        } catch (Mistake const& mistake) {
            throw mistake.In("event " + std::to_string(events.size() + 1));
        }
    }
    return events;
}

}  // namespace simulator
