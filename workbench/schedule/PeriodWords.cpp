#include "PeriodWords.h"

#include "ScheduleNames.h"
#include "ScheduleParts.h"

namespace workbench {

namespace {

// "1 to 7" for the weeks 1 to 5.
std::string DaysOfWeekNumber(unsigned week) {
    constexpr unsigned days = 7;
    unsigned const first = (week - 1) * days + 1;
    return std::to_string(first) + " to " + std::to_string(week == 5 ? 31 : first + days - 1);
}

bool IsMonth(std::optional<unsigned> month) {
    return month && *month <= 12;
}

// " in December 2026", " in odd months", " in 2026"; nothing without month and year.
std::string InWords(std::optional<unsigned> month, std::optional<unsigned> year) {
    std::string const yearText = year ? std::to_string(*year) : "";
    if (!month) {
        return year ? " in " + yearText : "";
    }
    std::string const separator = year ? (IsMonth(month) ? " " : " of ") : "";
    return " in " + MonthName(*month) + separator + yearText;
}

std::string DayName(unsigned day) {
    return day == 32   ? "the last day"
           : day == 33 ? "odd days"
           : day == 34 ? "even days"
                       : "day " + std::to_string(day);
}

std::string DateWords(ScheduleDate const& date) {
    bool const isNumbered = date.day && *date.day <= 31;
    std::string const given =
        date.weekday && !(IsComplete(date) && WithWeekday({date.year, date.month, date.day, {}}) == date)
            ? WeekdayName(*date.weekday)
            : "";
    if (!date.day) {
        return "every " + (given.empty() ? "day" : given) + InWords(date.month, date.year);
    }
    std::string const condition = given.empty() ? "" : ", if it is a " + given;
    if (isNumbered && IsMonth(date.month)) {
        return (date.year ? "" : "every ") + std::to_string(*date.day) + " " + MonthName(*date.month) +
               (date.year ? " " + std::to_string(*date.year) : "") + condition;
    }
    std::string const in = InWords(date.month, date.year);
    return DayName(*date.day) + (date.month ? in : " of every month" + in) + condition;
}

bool IsOpen(ScheduleDate const& date) {
    return !date.year && !date.month && !date.day && !date.weekday;
}

std::string RangeWords(DateRange const& range) {
    if (IsOpen(range.from) && IsOpen(range.to)) {
        return "every day";
    }
    if (IsOpen(range.from)) {
        return "until " + DateWords(range.to);
    }
    return IsOpen(range.to) ? "from " + DateWords(range.from)
                            : DateWords(range.from) + " to " + DateWords(range.to);
}

std::string LastDays(unsigned week) {
    return week == 6 ? "the last seven days" : "the seven days of the " + WeekName(week) + " week";
}

std::string WeekWords(WeekAndDay const& days) {
    std::string const in = InWords(days.month, {});
    if (days.weekday) {
        return "every " + (days.week ? WeekName(*days.week) + " " : "") + WeekdayName(*days.weekday) + in;
    }
    if (!days.week) {
        return "every day" + in;
    }
    std::string const of = days.month ? " of " + MonthName(*days.month) : " of every month";
    return (*days.week <= 5 ? "days " + DaysOfWeekNumber(*days.week) : LastDays(*days.week)) + of;
}

std::string WeekText(WeekAndDay const& days) {
    constexpr unsigned lastWeek = 6;
    bool const hasWord = days.weekday && days.week && *days.week <= lastWeek;
    std::string const week = !days.week ? "every"
                             : hasWord  ? WeekName(*days.week)
                                        : "week " + std::to_string(*days.week);
    std::string const day = days.weekday ? " " + WeekdayName(*days.weekday) : days.week ? "" : " day";
    return week + day + InWords(days.month, {});
}

}  // namespace

std::string PeriodWords(Period const& period) {
    if (auto const* const date = std::get_if<ScheduleDate>(&period)) {
        return DateWords(*date);
    }
    if (auto const* const range = std::get_if<DateRange>(&period)) {
        return RangeWords(*range);
    }
    if (auto const* const days = std::get_if<WeekAndDay>(&period)) {
        return WeekWords(*days);
    }
    return "the days of calendar " + std::to_string(std::get<CalendarReference>(period).instance);
}

std::string PeriodText(Period const& period) {
    if (auto const* const date = std::get_if<ScheduleDate>(&period)) {
        return PartText(*date);
    }
    if (auto const* const range = std::get_if<DateRange>(&period)) {
        return PartText(range->from) + " to " + PartText(range->to);
    }
    if (auto const* const days = std::get_if<WeekAndDay>(&period)) {
        return WeekText(*days);
    }
    return "calendar " + std::to_string(std::get<CalendarReference>(period).instance);
}

}  // namespace workbench
