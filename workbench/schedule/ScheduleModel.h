#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace workbench {

// The schedules of a Schedule object (clause 12.24) as data: what the texts of docs/schedules.md, the page,
// the terminal and `set` have in common. Numbers are kept as they are read, also if the standard does not
// allow them: CheckedParts.h says what is wrong. A part without a value is unspecified, which means "any".

struct ScheduleTime {
    std::optional<unsigned> hour;
    std::optional<unsigned> minute;
    std::optional<unsigned> second;
    std::optional<unsigned> hundredths;
};

// year 1900 to 2154; month 1 to 12, 13 for odd and 14 for even months; day 1 to 31, 32 for the last day of
// the month, 33 for odd and 34 for even days; weekday 1 for Monday to 7 for Sunday.
struct ScheduleDate {
    std::optional<unsigned> year;
    std::optional<unsigned> month;
    std::optional<unsigned> day;
    std::optional<unsigned> weekday;
};

// By the numbers of the application tags.
enum class ScheduleValueType : std::uint8_t {
    Null,
    Boolean,
    Unsigned,
    Signed,
    Real,
    Double,
    OctetString,
    CharacterString,
    BitString,
    Enumerated,
    Date,
    Time,
    ObjectIdentifier
};
constexpr std::size_t ScheduleValueTypes = 13;

// The text is "" for Null, "true", "21.5", "0aff", the octets of a character string, "0101" with the first
// bit first, "2026-03-15", "06:30" or "analog-value 3".
struct ScheduleValue {
    ScheduleValueType type = ScheduleValueType::Null;
    std::string text;
};

// From this time of the day on, this value.
struct ScheduleEntry {
    ScheduleTime time;
    ScheduleValue value;
};

constexpr std::size_t DaysOfWeek = 7;

struct WeeklySchedule {
    std::array<std::vector<ScheduleEntry>, DaysOfWeek> days;  // Monday first
};

// Both days are in the range.
struct DateRange {
    ScheduleDate from;
    ScheduleDate to;
};

// BACnetWeekNDay: week 1 for the days 1 to 7, ... 5 for 29 to 31, 6 for the last seven days of the month, 7
// to 9 for the seven days before those of the number below.
struct WeekAndDay {
    std::optional<unsigned> month;
    std::optional<unsigned> week;
    std::optional<unsigned> weekday;
};

// The days of a Calendar object of the device.
struct CalendarReference {
    std::uint32_t instance = 0;
};

using Period = std::variant<ScheduleDate, DateRange, WeekAndDay, CalendarReference>;

struct SpecialEvent {
    Period period;
    unsigned priority = 16;  // 1, the highest, to 16
    std::vector<ScheduleEntry> entries;
};

struct ExceptionSchedule {
    std::vector<SpecialEvent> events;
};

// Equal members. SameSchedule (ScheduleChanges.h) also compares values that are spelt differently.
bool operator==(ScheduleTime const& left, ScheduleTime const& right);
bool operator==(ScheduleDate const& left, ScheduleDate const& right);
bool operator==(ScheduleValue const& left, ScheduleValue const& right);
bool operator==(ScheduleEntry const& left, ScheduleEntry const& right);
bool operator==(DateRange const& left, DateRange const& right);
bool operator==(WeekAndDay const& left, WeekAndDay const& right);
bool operator==(CalendarReference const& left, CalendarReference const& right);
bool operator==(SpecialEvent const& left, SpecialEvent const& right);
bool operator==(WeeklySchedule const& left, WeeklySchedule const& right);
bool operator==(ExceptionSchedule const& left, ExceptionSchedule const& right);

}  // namespace workbench
