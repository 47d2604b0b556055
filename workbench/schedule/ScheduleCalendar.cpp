#include "ScheduleCalendar.h"

#include "Calendar.h"
#include "ScheduleParts.h"

namespace workbench {

namespace {

// Those of BACnet dates.
constexpr unsigned FirstYear = 1900;
constexpr unsigned LastYear = 2154;

unsigned LastDayOf(ScheduleDate const& day) {
    return static_cast<unsigned>(
        standard::DaysInMonth(static_cast<int>(*day.year), static_cast<int>(*day.month)));
}

bool IsMonthOf(std::optional<unsigned> month, unsigned number) {
    return !month || *month == number || (*month == 13 && number % 2 == 1) ||
           (*month == 14 && number % 2 == 0);
}

bool IsDayNumberOf(std::optional<unsigned> pattern, ScheduleDate const& day) {
    return !pattern || *pattern == *day.day || (*pattern == 32 && *day.day == LastDayOf(day)) ||
           (*pattern == 33 && *day.day % 2 == 1) || (*pattern == 34 && *day.day % 2 == 0);
}

bool IsWeekOf(std::optional<unsigned> week, ScheduleDate const& day) {
    constexpr unsigned days = 7;
    constexpr unsigned lastWeek = 6;
    if (!week) {
        return true;
    }
    if (*week < lastWeek) {
        return (*day.day - 1) / days + 1 == *week;
    }
    return (LastDayOf(day) - *day.day) / days + lastWeek == *week;
}

// Compares the parts that the limit has; an unspecified one limits nothing.
int Compared(ScheduleDate const& day, ScheduleDate const& limit) {
    for (auto const part : {&ScheduleDate::year, &ScheduleDate::month, &ScheduleDate::day}) {
        if (limit.*part && *(day.*part) != *(limit.*part)) {
            return *(day.*part) < *(limit.*part) ? -1 : 1;
        }
    }
    return 0;
}

}  // namespace

bool IsDayOf(ScheduleDate const& pattern, ScheduleDate const& day) {
    return (!pattern.year || *pattern.year == *day.year) && IsMonthOf(pattern.month, *day.month) &&
           IsDayNumberOf(pattern.day, day) && (!pattern.weekday || pattern.weekday == day.weekday);
}

bool IsDayOf(Period const& period, ScheduleDate const& day) {
    if (auto const* const date = std::get_if<ScheduleDate>(&period)) {
        return IsDayOf(*date, day);
    }
    if (auto const* const range = std::get_if<DateRange>(&period)) {
        return Compared(day, range->from) >= 0 && Compared(day, range->to) <= 0;
    }
    if (auto const* const days = std::get_if<WeekAndDay>(&period)) {
        return IsMonthOf(days->month, *day.month) && IsWeekOf(days->week, day) &&
               (!days->weekday || days->weekday == day.weekday);
    }
    return false;
}

std::vector<ScheduleDate> DaysOf(SpecialEvent const& event, unsigned year) {
    std::vector<ScheduleDate> days;
    if (year < FirstYear || year > LastYear) {
        return days;
    }
    for (ScheduleDate day = CompleteDate(year, 1, 1); day.year == year; day = NextDay(day)) {
        if (IsDayOf(event.period, day)) {
            days.push_back(day);
        }
    }
    return days;
}

ScheduleDate CompleteDate(unsigned year, unsigned month, unsigned day) {
    return {year, month, day,
            static_cast<unsigned>(
                standard::WeekdayOf(static_cast<int>(year), static_cast<int>(month), static_cast<int>(day)))};
}

ScheduleDate NextDay(ScheduleDate const& day) {
    if (*day.day < LastDayOf(day)) {
        return CompleteDate(*day.year, *day.month, *day.day + 1);
    }
    return *day.month < 12 ? CompleteDate(*day.year, *day.month + 1, 1) : CompleteDate(*day.year + 1, 1, 1);
}

}  // namespace workbench
