#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "Printable.h"
#include "ScheduleJson.h"
#include "ScheduleNames.h"
#include "ScheduleParts.h"
#include "ScheduleValues.h"
#include "Suggestion.h"

namespace workbench {

namespace {

using rapidjson::Value;

// More are a mistake: no device has as many, and the text of them would not be sent.
constexpr std::size_t MostEntries = 20000;

struct Mistake {
    std::string text;
};

[[noreturn]] void Fail(std::string const& path, std::string const& reason) {
    throw Mistake{(path.empty() ? "" : path + ": ") + reason};
}

std::string Below(std::string const& path, char const* name) {
    return path.empty() ? name : path + "." + name;
}

std::string Below(std::string const& path, std::size_t place) {
    return path + "[" + std::to_string(place) + "]";
}

Value const& Member(Value const& object, std::string const& path, char const* name) {
    if (!object.IsObject()) {
        Fail(path, "expected an object");
    }
    auto const member = object.FindMember(name);
    if (member == object.MemberEnd()) {
        Fail(Below(path, name), "is missing");
    }
    return member->value;
}

std::string Text(Value const& object, std::string const& path, char const* name) {
    Value const& member = Member(object, path, name);
    if (!member.IsString()) {
        Fail(Below(path, name), "expected a text");
    }
    return {member.GetString(), member.GetStringLength()};
}

Value::ConstArray List(Value const& object, std::string const& path, char const* name) {
    Value const& member = Member(object, path, name);
    if (!member.IsArray()) {
        Fail(Below(path, name), "expected a list");
    }
    return member.GetArray();
}

unsigned Number(Value const& object, std::string const& path, char const* name) {
    Value const& member = Member(object, path, name);
    if (!member.IsUint()) {
        Fail(Below(path, name), "expected a whole number");
    }
    return member.GetUint();
}

// null, or a member that is missing, is unspecified.
std::optional<unsigned> Part(Value const& object, std::string const& path, char const* name) {
    if (!object.IsObject()) {
        Fail(path, "expected an object");
    }
    auto const member = object.FindMember(name);
    bool const isGiven = member != object.MemberEnd() && !member->value.IsNull();
    return isGiven ? std::optional(Number(object, path, name)) : std::nullopt;
}

void Check(std::string const& path, std::string const& mistake) {
    if (!mistake.empty()) {
        Fail(path, mistake);
    }
}

ScheduleValue ValueOf(Value const& entry, std::string const& path) {
    std::string const word = Text(entry, path, "type");
    auto const type = TypeOfWord(word);
    if (!type) {
        Fail(Below(path, "type"),
             tools::Quoted(word) + " is not a type" + tools::DidYouMean(word, TypeWords()));
    }
    bool const hasValue = *type != ScheduleValueType::Null || entry.HasMember("value");
    std::string const text = hasValue ? Text(entry, path, "value") : "";
    auto usual = UsualText(*type, text);
    if (!usual) {
        Fail(Below(path, "value"), tools::Quoted(text) + " is not a value of type " + TypeWord(*type) +
                                       "; expected " + FormOf(*type));
    }
    return {*type, std::move(*usual)};
}

ScheduleEntry Entry(Value const& entry, std::string const& path) {
    std::string const text = Text(entry, path, "time");
    auto const time = TimeOfDayIn(text);
    if (!time) {
        Fail(Below(path, "time"), tools::Quoted(text) + " is not a time; expected a time such as 06:00");
    }
    return {*time, ValueOf(entry, path)};
}

class Reader {
public:
    WeeklySchedule Weekly(Value const& model) {
        WeeklySchedule schedule;
        auto const days = List(model, "", "days");
        if (days.Size() != DaysOfWeek) {
            Fail("days", "has " + std::to_string(days.Size()) + " lists; expected seven, Monday first");
        }
        for (std::size_t day = 0; day < DaysOfWeek; ++day) {
            Value const& list = days[static_cast<rapidjson::SizeType>(day)];
            schedule.days[day] = Entries(list, Below("days", day));
        }
        return schedule;
    }

    ExceptionSchedule Exception(Value const& model) {
        ExceptionSchedule schedule;
        for (Value const& event : List(model, "", "events")) {
            schedule.events.push_back(Event(event, Below("events", schedule.events.size())));
        }
        return schedule;
    }

private:
    void Count() {
        if (++count > MostEntries) {
            Fail("", "the schedule has more than " + std::to_string(MostEntries) + " entries and events");
        }
    }

    std::vector<ScheduleEntry> Entries(Value const& list, std::string const& path) {
        if (!list.IsArray()) {
            Fail(path, "expected a list");
        }
        std::vector<ScheduleEntry> entries;
        for (Value const& entry : list.GetArray()) {
            Count();
            entries.push_back(Entry(entry, Below(path, entries.size())));
        }
        return entries;
    }

    static ScheduleDate Date(Value const& date, std::string const& path) {
        ScheduleDate const read{Part(date, path, "year"), Part(date, path, "month"), Part(date, path, "day"),
                                Part(date, path, "weekday")};
        Check(path, MistakeOf(read));
        return read;
    }

    static Period PeriodOf(Value const& period, std::string const& path) {
        std::string const kind = Text(period, path, "kind");
        if (kind == "date") {
            return Date(Member(period, path, "date"), Below(path, "date"));
        }
        if (kind == "range") {
            return DateRange{Date(Member(period, path, "from"), Below(path, "from")),
                             Date(Member(period, path, "to"), Below(path, "to"))};
        }
        if (kind == "week-and-day") {
            return WeekAndDay{Part(period, path, "month"), Part(period, path, "week"),
                              Part(period, path, "weekday")};
        }
        if (kind == "calendar") {
            return CalendarReference{Number(period, path, "instance")};
        }
        Fail(Below(path, "kind"),
             tools::Quoted(kind) + " is not a period; expected date, range, week-and-day or calendar");
    }

    SpecialEvent Event(Value const& event, std::string const& path) {
        Count();
        SpecialEvent read;
        read.period = PeriodOf(Member(event, path, "period"), Below(path, "period"));
        Check(Below(path, "period"), MistakeOf(read.period));
        read.priority = Number(event, path, "priority");
        Check(path, MistakeOfPriority(read.priority));
        read.entries = Entries(Member(event, path, "entries"), Below(path, "entries"));
        return read;
    }

    std::size_t count = 0;
};

}  // namespace

ScheduleOfJson ReadScheduleJson(rapidjson::Value const& model) {
    ScheduleOfJson result;
    try {
        std::string const kind = Text(model, "", "kind");
        if (kind == "weekly") {
            result.schedule = Reader().Weekly(model);
        } else if (kind == "exception") {
            result.schedule = Reader().Exception(model);
        } else {
            Fail("kind", tools::Quoted(kind) + " is not a schedule; expected weekly or exception");
        }
    } catch (Mistake const& mistake) {
        result.mistake = mistake.text;
    }
    return result;
}

}  // namespace workbench
