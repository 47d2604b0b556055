#include "ScheduleReader.h"

#include "ConstructedReader.h"
#include "Content.h"
#include "Mistake.h"
#include "PrimitiveReader.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

constexpr std::uint16_t kCalendarType = 6;

// A time-value: {"08:00", real(21.5)}. Values of schedules do not move.
void writeEntry(ScriptValue const& entry, TagWriter& writer) {
    if (checks::list(entry).size() != 2) {
        throw Mistake("an entry must be a time and a value");
    }
    writer.application(ApplicationTag::Time, content::time(checks::time(entry.list[0])));
    readPrimitive(Datatype::Any, entry.list[1])->encode(writer, {});
}

void writeEntries(ScriptValue const& entries, std::uint8_t tagNumber, TagWriter& writer) {
    writer.opening(tagNumber);
    if (!entries.isNil()) {
        for (ScriptValue const& entry : checks::list(entries)) {
            writeEntry(entry, writer);
        }
    }
    writer.closing(tagNumber);
}

// BACnetWeekNDay: month, week of the month, day of the week.
Octets weekNDay(ScriptValue const& value) {
    checks::fields(value, {"month", "week", "day"});
    struct Part {
        char const* name;
        std::uint32_t highest;
    };
    Octets octets;
    for (Part const& part : {Part{"month", 14}, Part{"week", 9}, Part{"day", 7}}) {
        ScriptValue const& number = value[part.name];
        octets.push_back(
            static_cast<char>(number.isNil() ? kAny : checks::unsignedUpTo(number, part.highest)));
    }
    return octets;
}

// The choices of BACnetCalendarEntry, in a BACnetSpecialEvent's own choice 0.
void writeCalendarEntry(ScriptValue const& event, TagWriter& writer) {
    writer.opening(0);
    if (!event["date"].isNil()) {
        writer.context(0, content::date(checks::date(event["date"])));
    } else if (!event["week_n_day"].isNil()) {
        writer.context(2, weekNDay(event["week_n_day"]));
    } else {
        writer.opening(1);
        writeDateRange(event, writer);
        writer.closing(1);
    }
    writer.closing(0);
}

void expectOnePeriod(ScriptValue const& event) {
    int const count = !event["date"].isNil() + (!event["from"].isNil() || !event["to"].isNil()) +
                      !event["week_n_day"].isNil() + !event["calendar"].isNil();
    if (count != 1) {
        throw Mistake("an event wants one of date, from and to, week_n_day, calendar");
    }
}

ValuePtr readEvent(ScriptValue const& event) {
    checks::fields(event, {"date", "from", "to", "week_n_day", "calendar", "priority", "entries"});
    expectOnePeriod(event);
    TagWriter writer;
    if (!event["calendar"].isNil()) {
        std::uint32_t const instance = checks::unsignedUpTo(event["calendar"], ObjectId::kLastInstance);
        writer.context(1, content::objectIdentifier({kCalendarType, instance}));
    } else {
        writeCalendarEntry(event, writer);
    }
    writeEntries(event["entries"], 2, writer);
    ScriptValue const& priority = event["priority"];
    writer.context(3, content::unsignedNumber(priority.isNil() ? 16 : checks::unsignedUpTo(priority, 16)));
    return std::make_shared<FixedValue>(writer.take());
}

}  // namespace

std::vector<ValuePtr> readWeeklySchedule(ScriptValue const& value) {
    checks::fields(value, {"monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"});
    std::vector<ValuePtr> days;
    for (char const* day : {"monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"}) {
        try {
            TagWriter writer;
            writeEntries(value[day], 0, writer);
            days.push_back(std::make_shared<FixedValue>(writer.take()));
        } catch (Mistake const& mistake) {
            throw mistake.in(day);
        }
    }
    return days;
}

std::vector<ValuePtr> readExceptionSchedule(ScriptValue const& value) {
    std::vector<ValuePtr> events;
    for (ScriptValue const& event : checks::list(value)) {
        try {
            events.push_back(readEvent(event));
        } catch (Mistake const& mistake) {
            throw mistake.in("event " + std::to_string(events.size() + 1));
        }
    }
    return events;
}

}  // namespace simulator
