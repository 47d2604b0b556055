#include "ScheduleLines.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "DatumText.h"
#include "OctetVector.h"
#include "Printable.h"
#include "ScheduleNames.h"
#include "SchedulePlace.h"

namespace workbench {

namespace {

using standard::Datum;
using standard::DatumKind;
using standard::DatumText;

constexpr std::size_t DayWidth = 9;

// Context tags of BACnetSpecialEvent and BACnetCalendarEntry.
enum EventTag : std::uint8_t { Entry = 0, Calendar = 1, Entries = 2, Priority = 3 };
enum EntryTag : std::uint8_t { OneDate = 0, Range = 1, WeekNDay = 2 };

bool Encloses(Datum const& datum, std::uint8_t tag) {
    return datum.kind == DatumKind::Constructed && datum.tag == tag;
}

bool HasOctets(Datum const& datum, std::uint8_t tag, std::size_t count) {
    return datum.kind == DatumKind::Unknown && datum.isContext && datum.tag == tag &&
           datum.octets.size() == count;
}

std::string DateText(std::array<std::uint8_t, 4> const& date) {
    Datum datum;
    datum.kind = DatumKind::Date;
    datum.calendar = date;
    return DatumText(datum);
}

std::string TwoDigits(std::uint8_t value) {
    return value == standard::Unspecified ? "*" : (value < 10 ? "0" : "") + std::to_string(value);
}

std::string TimeText(std::array<std::uint8_t, 4> const& time) {
    bool const isFull = (time[2] != 0 && time[2] != standard::Unspecified) ||
                        (time[3] != 0 && time[3] != standard::Unspecified);
    std::string const minutes = TwoDigits(time[0]) + ":" + TwoDigits(time[1]);
    return isFull ? minutes + ":" + TwoDigits(time[2]) + "." + TwoDigits(time[3]) : minutes;
}

// Pairs of a time and a value.
std::optional<std::string> EntriesText(std::vector<Datum> const& parts) {
    std::string text;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        if (parts[i].kind != DatumKind::Time) {
            return std::nullopt;
        }
        text += (text.empty() ? "" : ", ") + TimeText(parts[i].calendar) + " " + DatumText(parts[i + 1]);
    }
    return parts.size() % 2 == 0 ? std::optional(text.empty() ? "-" : text) : std::nullopt;
}

std::string WeekNDayText(std::vector<char> const& octets) {
    unsigned const month = standard::OctetValue(octets[0]);
    unsigned const week = standard::OctetValue(octets[1]);
    unsigned const day = standard::OctetValue(octets[2]);
    std::string text = day == standard::Unspecified ? "every day" : WeekdayName(day);
    if (week != standard::Unspecified) {
        text += " of the " + WeekName(week) + " week";
    }
    return text + (month == standard::Unspecified ? "" : " of " + MonthName(month));
}

std::optional<std::string> PeriodText(Datum const& period) {
    if (HasOctets(period, Calendar, 4)) {
        std::uint32_t encoded = 0;
        for (char const octet : period.octets) {
            encoded = encoded << 8 | standard::OctetValue(octet);
        }
        return "calendar " + std::to_string(standard::ObjectId::Of(encoded).instance);
    }
    if (!Encloses(period, Entry) || period.children.size() != 1) {
        return std::nullopt;
    }
    Datum const& entry = period.children.front();
    if (HasOctets(entry, OneDate, 4)) {
        std::array<std::uint8_t, 4> date{};
        for (std::size_t i = 0; i < date.size(); ++i) {
            date[i] = static_cast<std::uint8_t>(entry.octets[i]);
        }
        return DateText(date);
    }
    if (HasOctets(entry, WeekNDay, 3)) {
        return WeekNDayText(entry.octets);
    }
    bool const isRange = Encloses(entry, Range) && entry.children.size() == 2 &&
                         entry.children[0].kind == DatumKind::Date &&
                         entry.children[1].kind == DatumKind::Date;
    return isRange ? std::optional(DateText(entry.children[0].calendar) + " to " +
                                   DateText(entry.children[1].calendar))
                   : std::nullopt;
}

// The three parts of the sequence of an event.
std::optional<std::string> EventText(Datum const& period, Datum const& entries, Datum const& priority) {
    auto const when = PeriodText(period);
    auto const what = Encloses(entries, Entries) ? EntriesText(entries.children) : std::nullopt;
    if (!when || !what || !HasOctets(priority, Priority, 1)) {
        return std::nullopt;
    }
    return *when + ": " + *what + " (priority " + std::to_string(standard::OctetValue(priority.octets[0])) +
           ")";
}

std::vector<std::string> Unreadable(std::vector<Datum> const& values) {
    std::string text;
    for (Datum const& value : values) {
        text += (text.empty() ? "" : ", ") + DatumText(value);
    }
    return {text};
}

}  // namespace

std::vector<std::string> WeeklyLines(std::vector<Datum> const& values) {
    std::vector<std::string> lines;
    for (Datum const& day : values) {
        auto const entries = Encloses(day, 0) ? EntriesText(day.children) : std::nullopt;
        if (values.size() != DaysOfWeek || !entries) {
            return Unreadable(values);
        }
        lines.push_back(tools::FitTo(DayPlace(lines.size()), DayWidth) + "  " + *entries);
    }
    return lines;
}

std::vector<std::string> ExceptionLines(std::vector<Datum> const& values) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < values.size(); i += 3) {
        auto const event =
            i + 2 < values.size() ? EventText(values[i], values[i + 1], values[i + 2]) : std::nullopt;
        if (!event) {
            return Unreadable(values);
        }
        lines.push_back(*event);
    }
    return lines;
}

}  // namespace workbench
