#include "ComposeSchedule.h"

#include <cstddef>
#include <cstdint>

#include "DriverFields.h"
#include "Printable.h"
#include "ScheduleNames.h"
#include "ScheduleParts.h"
#include "ScheduleValues.h"
#include "SixDecimals.h"

namespace workbench {

namespace {

// The longest contents whose length the driver writes in a form in which it can be read, less the octet
// before a text or before bits.
constexpr std::size_t LongestOctets = 253;
constexpr std::size_t LongestText = LongestOctets - 1;
constexpr std::size_t MostBits = LongestText * 8;
// The driver converts the digits of a text to a signed number.
constexpr std::uint32_t LargestUnsigned = 2147483647;

// Type, length and value, or why there are none.
struct Tail {
    std::string text;
    std::string mistake;
};

Tail TailOf(ScheduleValueType type, std::string const& field) {
    return {std::to_string(static_cast<unsigned>(type)) + "," + std::to_string(field.size()) + "," + field,
            {}};
}

std::string LengthMistake(std::size_t length, std::size_t longest, char const* unit) {
    if (length == 0) {
        return "the driver cannot write an empty value";
    }
    return length > longest ? "the value has " + std::to_string(length) + " " + unit +
                                  "; the driver can write " + std::to_string(longest)
                            : "";
}

std::string TextMistake(std::string const& text) {
    if (text.find_first_of(",;") != std::string::npos) {
        return "the driver splits a text at ',' and ';', so " + tools::Quoted(text) + " cannot be written";
    }
    return LengthMistake(text.size(), LongestText, "octets");
}

Tail Checked(ScheduleValueType type, std::string const& field, std::string const& mistake) {
    return mistake.empty() ? TailOf(type, field) : Tail{{}, mistake};
}

Tail UnsignedTail(std::string const& usual, bool isWeekly) {
    if (std::stoull(usual) > LargestUnsigned) {
        return {{}, "the driver cannot write the Unsigned " + usual + "; the largest is 2147483647"};
    }
    return TailOf(ScheduleValueType::Unsigned, usual + (isWeekly ? "d" : ""));
}

// As the driver prints it, and as it reads it: a number with a sign.
Tail EnumeratedTail(std::string const& usual) {
    auto const number = static_cast<std::uint32_t>(std::stoull(usual));
    return TailOf(ScheduleValueType::Enumerated, std::to_string(static_cast<std::int32_t>(number)));
}

Tail TimeTail(std::string const& usual) {
    ScheduleTime const time = *TimeOfDayIn(usual);
    return IsComplete(time) ? TailOf(ScheduleValueType::Time, TimeField(time))
                            : Tail{{}, "the driver cannot write a time with an unspecified part"};
}

Tail ObjectTail(std::string const& usual) {
    standard::ObjectId const object = *ObjectIn(usual);
    return {"12," + std::to_string(object.type) + "," + std::to_string(object.instance), {}};
}

Tail ValueTail(ScheduleValue const& value, std::string const& usual, bool isWeekly) {
    switch (value.type) {
        case ScheduleValueType::Null:
            return {isWeekly ? "0,1,0" : "", {}};
        case ScheduleValueType::Boolean:
            return TailOf(value.type, usual == "true" ? "1" : "0");
        case ScheduleValueType::Unsigned:
            return UnsignedTail(usual, isWeekly);
        case ScheduleValueType::Real:
        case ScheduleValueType::Double:
            return TailOf(value.type, SixDecimals(NumberOf({value.type, usual}), value.type));
        case ScheduleValueType::OctetString:
            return Checked(value.type, usual, LengthMistake(usual.size() / 2, LongestOctets, "octets"));
        case ScheduleValueType::CharacterString:
            return Checked(value.type, usual, TextMistake(usual));
        case ScheduleValueType::BitString:
            return Checked(value.type, usual, LengthMistake(usual.size(), MostBits, "bits"));
        case ScheduleValueType::Enumerated:
            return EnumeratedTail(usual);
        case ScheduleValueType::Date:
            return TailOf(value.type, DateField(*DateIn(usual)));
        case ScheduleValueType::Time:
            return TimeTail(usual);
        case ScheduleValueType::ObjectIdentifier:
            return ObjectTail(usual);
        default:
            return TailOf(value.type, usual);
    }
}

class Composer {
public:
    // Appends the entries; place makes the place of a time.
    template <typename Place>
    void Append(std::vector<ScheduleEntry> const& entries, bool isWeekly, Place place) {
        bool isFirst = true;
        for (ScheduleEntry const& entry : entries) {
            composed.text += isFirst ? "" : ",";
            isFirst = false;
            std::string const mistake = AppendEntry(entry, isWeekly);
            Refuse(place(entry.time), mistake);
        }
    }

    void Append(std::string const& text) { composed.text += text; }

    void Refuse(std::string const& place, std::string const& mistake) {
        if (!mistake.empty()) {
            composed.mistakes.push_back({place, mistake});
        }
    }

    ComposedSchedule Result() {
        if (!composed.mistakes.empty()) {
            composed.text.clear();
        }
        return std::move(composed);
    }

private:
    std::string AppendEntry(ScheduleEntry const& entry, bool isWeekly) {
        std::string const timeMistake = MistakeOf(entry.time);
        if (!timeMistake.empty()) {
            return timeMistake;
        }
        if (!IsComplete(entry.time)) {
            return "the driver cannot write a time with an unspecified part";
        }
        auto const usual = UsualText(entry.value.type, entry.value.text);
        if (!usual) {
            return tools::Quoted(entry.value.text) + " is not a value of type " + TypeWord(entry.value.type) +
                   "; expected " + FormOf(entry.value.type);
        }
        Tail const tail = ValueTail(entry.value, *usual, isWeekly);
        composed.text += TimeField(entry.time) + "," + tail.text;
        return tail.mistake;
    }

    ComposedSchedule composed;
};

std::string PeriodField(Period const& period) {
    if (auto const* const date = std::get_if<ScheduleDate>(&period)) {
        return "0," + DateField(*date);
    }
    if (auto const* const range = std::get_if<DateRange>(&period)) {
        return "1," + DateField(range->from) + "," + DateField(range->to);
    }
    if (auto const* const days = std::get_if<WeekAndDay>(&period)) {
        return "2," + WeekAndDayField(*days);
    }
    return "3," + std::to_string(std::get<CalendarReference>(period).instance);
}

void AppendEvent(Composer& composer, std::size_t number, SpecialEvent const& event) {
    std::string const mistake = MistakeOf(event.period);
    composer.Refuse(EventPlace(number), mistake);
    composer.Refuse(EventPlace(number), MistakeOfPriority(event.priority));
    if (event.entries.empty()) {
        composer.Refuse(
            EventPlace(number),
            "an event without entries would merge with others in the driver's text; give it an entry "
            "or remove it");
    }
    composer.Append((mistake.empty() ? PeriodField(event.period) : "") + "," +
                    std::to_string(event.priority) + ",");
    composer.Append(event.entries, false,
                    [number](ScheduleTime const& time) { return EventPlace(number, time); });
    composer.Append(";");
}

}  // namespace

ComposedSchedule Compose(WeeklySchedule const& schedule) {
    Composer composer;
    for (std::size_t day = 0; day < DaysOfWeek; ++day) {
        composer.Append(schedule.days[day], true,
                        [day](ScheduleTime const& time) { return DayPlace(day, time); });
        composer.Append(";");
    }
    return composer.Result();
}

ComposedSchedule Compose(ExceptionSchedule const& schedule) {
    Composer composer;
    if (schedule.events.empty()) {
        composer.Refuse(
            "",
            "the driver cannot write an exception schedule without events; keep one, for example on a "
            "day of the past");
    }
    for (std::size_t number = 0; number < schedule.events.size(); ++number) {
        AppendEvent(composer, number, schedule.events[number]);
    }
    return composer.Result();
}

}  // namespace workbench
