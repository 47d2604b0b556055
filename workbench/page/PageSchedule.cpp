#include "PageSchedule.h"

#include <ctime>
#include <string_view>
#include <vector>

#include "InForce.h"
#include "ScheduleCalendar.h"
#include "ScheduleJson.h"
#include "ScheduleLosses.h"
#include "ScheduleVariable.h"
#include "TimeText.h"
#include "Units.h"
#include "ValueText.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

constexpr long long Second = 10000000;
// Of all events. A text of a megabyte can have fifty thousand events on every day.
constexpr std::size_t MostDays = 100000;

// The variables of the same Schedule object.
struct Related {
    PageVariable const* weekly = nullptr;
    PageVariable const* exception = nullptr;
    PageVariable const* value = nullptr;
};

Related RelatedOf(PagePlant const& plant, PageVariable const& variable) {
    Related related;
    for (PageVariable const& other : plant.Variables()) {
        bool const isOfObject = other.block == variable.block &&
                                other.config->objectType == variable.config->objectType &&
                                other.config->objectNumber == variable.config->objectNumber;
        if (!isOfObject) {
            continue;
        }
        switch (ScheduleKindOf(*other.config)) {
            case ScheduleKind::Weekly:
                related.weekly = &other;
                break;
            case ScheduleKind::Exception:
                related.exception = &other;
                break;
            case ScheduleKind::None:
                related.value = std::string_view(other.config->property->name) == "present-value"
                                    ? &other
                                    : related.value;
        }
    }
    return related;
}

ScheduleInstant LocalNow() {
    auto const seconds = static_cast<std::time_t>(
        (dorvel::Environment().Now() + dorvel::Environment().LocalTimeDiff() - UnixEpoch) / Second);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    ScheduleInstant now;
    now.date = CompleteDate(static_cast<unsigned>(parts.tm_year + 1900),
                            static_cast<unsigned>(parts.tm_mon + 1), static_cast<unsigned>(parts.tm_mday));
    now.time = {static_cast<unsigned>(parts.tm_hour), static_cast<unsigned>(parts.tm_min),
                static_cast<unsigned>(parts.tm_sec), 0U};
    return now;
}

// What is known of the object's schedules.
struct Reading {
    ScheduleReading<WeeklySchedule> weekly;
    ScheduleReading<ExceptionSchedule> exception;
};

Reading Read(PagePlant const& plant, Related const& related) {
    Reading reading;
    if (related.weekly) {
        if (auto const text = ScheduleTextNow(plant, *related.weekly)) {
            reading.weekly = ReadWeekly(*text);
        }
    }
    if (related.exception) {
        if (auto const text = ScheduleTextNow(plant, *related.exception)) {
            reading.exception = ReadException(*text);
        }
    }
    return reading;
}

class AnswerWriter {
public:
    AnswerWriter(PagePlant const& runPlant, PageVariable const& scheduleVariable)
        : plant(runPlant),
          variable(scheduleVariable),
          kind(ScheduleKindOf(*variable.config)),
          names(ScheduleNamesOf(*variable.block, *variable.config)),
          related(RelatedOf(plant, variable)),
          reading(Read(plant, related)) {}

    std::string Text(unsigned year) {
        ScheduleInstant const now = LocalNow();
        writer.StartObject();
        WriteVariable();
        if (kind == ScheduleKind::Weekly) {
            WriteReading(reading.weekly);
        } else {
            WriteReading(reading.exception);
        }
        WriteRelated();
        unsigned const shown = year == 0 ? now.date.year.value_or(FirstYear) : year;
        FindDays(shown);
        WriteForce(now);
        WriteCalendar(shown);
        writer.EndObject();
        return JsonLine(buffer);
    }

private:
    void WriteVariable() {
        VariableConfig const& config = *variable.config;
        WriteField(writer, "variable", config.name);
        WriteField(writer, "kind", KindOf(config));
        WriteOptional(writer, "unit", names.unit);
        writer.Key("states");
        writer.StartArray();
        for (std::string const& text : names.stateTexts) {
            workbench::WriteText(writer, text);
        }
        writer.EndArray();
        writer.Key("writable");
        writer.Bool(config.write);
        writer.Key("text");
        if (auto const text = ScheduleTextNow(plant, variable)) {
            workbench::WriteText(writer, *text);
        } else {
            writer.Null();
        }
    }

    template <typename Schedule>
    void WriteReading(ScheduleReading<Schedule> const& read) {
        notes = read.notes;
        writer.Key("model");
        if (read.schedule) {
            WriteSchedule(writer, *read.schedule, names);
        } else {
            writer.Null();
        }
        WriteOptional(writer, "mistake", read.mistake.reason.empty() ? "" : RemarkText(read.mistake));
        writer.Key("losses");
        writer.StartArray();
        if (read.schedule) {
            for (ScheduleLoss const& loss : Losses(*read.schedule)) {
                WriteRemark(loss.place, loss.reason);
            }
        }
        writer.EndArray();
    }

    void WriteRemark(std::string const& place, std::string const& reason) {
        writer.StartObject();
        WriteField(writer, "place", place);
        WriteField(writer, "reason", reason);
        writer.EndObject();
    }

    void WriteId(char const* name, PageVariable const* other) {
        writer.Key(name);
        if (other) {
            writer.Uint64(other->id);
        } else {
            writer.Null();
        }
    }

    void WriteRelated() {
        writer.Key("related");
        writer.StartObject();
        WriteId("weekly", related.weekly);
        WriteId("exception", related.exception);
        WriteId("value", related.value);
        writer.EndObject();
    }

    void WriteForce(char const* name, std::optional<ValueInForce> const& force) {
        writer.Key(name);
        if (!force) {
            writer.Null();
            return;
        }
        writer.StartObject();
        WriteField(writer, "words", force->words);
        writer.Key("value");
        if (force->value) {
            WriteScheduleValue(writer, *force->value, names);
        } else {
            writer.Null();
        }
        WriteField(writer, "source", force->source);
        WriteField(writer, "since", InstantText(force->since));
        WriteOptional(writer, "until", force->until ? InstantText(*force->until) : "");
        writer.EndObject();
    }

    void WriteForce(ScheduleInstant const& now) {
        ScheduleInForce const force =
            InForce(reading.weekly.schedule ? &*reading.weekly.schedule : nullptr,
                    reading.exception.schedule ? &*reading.exception.schedule : nullptr, now, names);
        WriteForce("now", force.now);
        WriteForce("next", force.next);
        notes.insert(notes.end(), force.notes.begin(), force.notes.end());
        writer.Key("notes");
        writer.StartArray();
        for (ScheduleRemark const& note : notes) {
            WriteRemark(note.place, note.reason);
        }
        writer.EndArray();
    }

    void FindDays(unsigned year) {
        if (kind != ScheduleKind::Exception || !reading.exception.schedule) {
            return;
        }
        std::size_t count = 0;
        for (SpecialEvent const& event : reading.exception.schedule->events) {
            calendar.push_back(count < MostDays ? DaysOf(event, year) : std::vector<ScheduleDate>());
            count += calendar.back().size();
        }
        if (count >= MostDays) {
            notes.push_back(
                {"", "the calendar shows the days of the first events alone; there are too many"});
        }
    }

    void WriteCalendar(unsigned year) {
        writer.Key("calendar");
        writer.StartObject();
        writer.Key("year");
        writer.Uint(year);
        writer.Key("events");
        writer.StartArray();
        for (std::vector<ScheduleDate> const& days : calendar) {
            writer.StartArray();
            for (ScheduleDate const& day : days) {
                workbench::WriteText(writer, DayText(day));
            }
            writer.EndArray();
        }
        writer.EndArray();
        writer.EndObject();
    }

    PagePlant const& plant;
    PageVariable const& variable;
    ScheduleKind kind;
    ValueNames names;
    Related related;
    Reading reading;
    ScheduleRemarks notes;
    std::vector<std::vector<ScheduleDate>> calendar;  // of each event
    rapidjson::StringBuffer buffer;
    JsonWriter writer{buffer};
};

}  // namespace

std::optional<std::string> ScheduleTextNow(PagePlant const& plant, PageVariable const& variable) {
    SharedSnapshot const block = plant.Run().memory.board.Latest(*variable.block);
    if (!block || variable.index >= block->variables.size()) {
        return {};
    }
    OpcUa_Variant const& value = block->variables[variable.index].state.Value;
    if (value.Datatype != OpcUaType_String) {
        return {};
    }
    return std::string(View(value.Value.Octets));
}

std::string ScheduleAnswer(PagePlant const& plant, PageVariable const& variable, unsigned year) {
    return AnswerWriter(plant, variable).Text(year);
}

}  // namespace workbench
