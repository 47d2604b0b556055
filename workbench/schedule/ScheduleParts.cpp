#include "ScheduleParts.h"

#include <cctype>
#include <vector>

#include "Calendar.h"
#include "CalendarText.h"
#include "ObjectId.h"
#include "ScheduleNames.h"

namespace workbench {

namespace {

constexpr unsigned OddMonths = 13;
constexpr unsigned EvenMonths = 14;
constexpr unsigned LastDay = 32;
constexpr unsigned OddDays = 33;
constexpr unsigned EvenDays = 34;

std::string TwoDigits(std::optional<unsigned> part) {
    return !part ? "*" : (*part < 10 ? "0" : "") + std::to_string(*part);
}

std::string MonthText(std::optional<unsigned> month) {
    return month == OddMonths ? "odd" : month == EvenMonths ? "even" : TwoDigits(month);
}

std::string MonthDayText(std::optional<unsigned> day) {
    return day == LastDay ? "last" : day == OddDays ? "odd" : day == EvenDays ? "even" : TwoDigits(day);
}

// The number of the part, nothing inside for "*"; nothing at all for another text.
std::optional<std::optional<unsigned>> NumberIn(std::string_view text) {
    if (text == "*") {
        return std::optional<unsigned>();
    }
    unsigned number = 0;
    for (char const c : text) {
        if (c < '0' || c > '9') {
            return std::nullopt;
        }
        number = number * 10 + static_cast<unsigned>(c - '0');
    }
    constexpr std::size_t mostDigits = 4;
    return text.empty() || text.size() > mostDigits ? std::nullopt : std::optional(std::optional(number));
}

std::optional<std::optional<unsigned>> MonthIn(std::string_view text) {
    return text == "odd"    ? std::optional(std::optional(OddMonths))
           : text == "even" ? std::optional(std::optional(EvenMonths))
                            : NumberIn(text);
}

std::optional<std::optional<unsigned>> DayIn(std::string_view text) {
    return text == "last"   ? std::optional(std::optional(LastDay))
           : text == "odd"  ? std::optional(std::optional(OddDays))
           : text == "even" ? std::optional(std::optional(EvenDays))
                            : NumberIn(text);
}

std::string RangeMistake(char const* name, std::optional<unsigned> part, unsigned low, unsigned high) {
    return !part || (*part >= low && *part <= high)
               ? ""
               : std::string(name) + " " + std::to_string(*part) + " is not one of " + std::to_string(low) +
                     " to " + std::to_string(high);
}

// The first that is not empty.
std::string First(std::vector<std::string> const& texts) {
    for (std::string const& text : texts) {
        if (!text.empty()) {
            return text;
        }
    }
    return {};
}

int Weekday(ScheduleDate const& date) {
    return standard::WeekdayOf(static_cast<int>(*date.year), static_cast<int>(*date.month),
                               static_cast<int>(*date.day));
}

std::optional<unsigned> Part(std::uint8_t octet) {
    return octet == standard::Unspecified ? std::nullopt : std::optional<unsigned>(octet);
}

}  // namespace

std::string PartText(ScheduleTime const& time) {
    std::string text = TwoDigits(time.hour) + ":" + TwoDigits(time.minute);
    if (time.second != 0u || time.hundredths != 0u) {
        text += ":" + TwoDigits(time.second);
    }
    return time.hundredths != 0u ? text + "." + TwoDigits(time.hundredths) : text;
}

std::optional<ScheduleTime> TimeOfDayIn(std::string_view text) {
    auto const time = standard::TimeOfText(std::string(text.substr(0, 16)));
    return time ? std::optional(
                      ScheduleTime{Part((*time)[0]), Part((*time)[1]), Part((*time)[2]), Part((*time)[3])})
                : std::nullopt;
}

std::string PartText(ScheduleDate const& date) {
    bool const isImplied =
        !date.weekday || (IsComplete(date) && static_cast<int>(*date.weekday) == Weekday(date));
    std::string const year = date.year ? std::to_string(*date.year) : "*";
    return (isImplied ? "" : WeekdayName(*date.weekday) + " ") + year + "-" + MonthText(date.month) + "-" +
           MonthDayText(date.day);
}

std::optional<ScheduleDate> DateIn(std::string_view text) {
    ScheduleDate date;
    std::size_t const blank = text.find(' ');
    if (blank != std::string_view::npos) {
        date.weekday = WeekdayOfName(text.substr(0, blank));
        if (!date.weekday) {
            return std::nullopt;
        }
        text.remove_prefix(blank + 1);
    }
    std::size_t const first = text.find('-');
    std::size_t const second = first == std::string_view::npos ? first : text.find('-', first + 1);
    if (second == std::string_view::npos) {
        return std::nullopt;
    }
    auto const year = NumberIn(text.substr(0, first));
    auto const month = MonthIn(text.substr(first + 1, second - first - 1));
    auto const day = DayIn(text.substr(second + 1));
    if (!year || !month || !day) {
        return std::nullopt;
    }
    date.year = *year;
    date.month = *month;
    date.day = *day;
    return MistakeOf(date).empty() ? std::optional(WithWeekday(date)) : std::nullopt;
}

bool IsComplete(ScheduleDate const& date) {
    return date.year && date.month && date.day && *date.month >= 1 && *date.month <= 12 && *date.day >= 1 &&
           *date.year >= 1900 && *date.year < 2155 &&
           static_cast<int>(*date.day) <=
               standard::DaysInMonth(static_cast<int>(*date.year), static_cast<int>(*date.month));
}

bool IsComplete(ScheduleTime const& time) {
    return time.hour && time.minute && time.second && time.hundredths && MistakeOf(time).empty();
}

ScheduleDate WithWeekday(ScheduleDate date) {
    if (!date.weekday && IsComplete(date)) {
        date.weekday = static_cast<unsigned>(Weekday(date));
    }
    return date;
}

std::string MistakeOf(ScheduleTime const& time) {
    return First({RangeMistake("hour", time.hour, 0, 23), RangeMistake("minute", time.minute, 0, 59),
                  RangeMistake("second", time.second, 0, 59),
                  RangeMistake("hundredths of a second", time.hundredths, 0, 99)});
}

std::string MistakeOf(ScheduleDate const& date) {
    std::string const mistake =
        First({RangeMistake("year", date.year, 1900, 2154), RangeMistake("month", date.month, 1, EvenMonths),
               RangeMistake("day", date.day, 1, EvenDays), RangeMistake("weekday", date.weekday, 1, 7)});
    if (!mistake.empty() || !date.month || *date.month > 12 || !date.day || *date.day > 31) {
        return mistake;
    }
    // The 29th of February is a day of some years.
    int const year = date.year ? static_cast<int>(*date.year) : 2000;
    int const last = standard::DaysInMonth(year, static_cast<int>(*date.month));
    return static_cast<int>(*date.day) <= last
               ? ""
               : MonthName(*date.month) + (date.year ? " " + std::to_string(*date.year) : "") +
                     " has no day " + std::to_string(*date.day);
}

std::string MistakeOf(Period const& period) {
    if (auto const* const date = std::get_if<ScheduleDate>(&period)) {
        return MistakeOf(*date);
    }
    if (auto const* const range = std::get_if<DateRange>(&period)) {
        return First({MistakeOf(range->from), MistakeOf(range->to)});
    }
    if (auto const* const days = std::get_if<WeekAndDay>(&period)) {
        return First({RangeMistake("month", days->month, 1, EvenMonths),
                      RangeMistake("week", days->week, 1, 9), RangeMistake("weekday", days->weekday, 1, 7)});
    }
    return RangeMistake("calendar", std::get<CalendarReference>(period).instance, 0,
                        standard::ObjectId::LastInstance);
}

std::string MistakeOfPriority(unsigned priority) {
    return RangeMistake("priority", priority, 1, 16);
}

}  // namespace workbench
