#include "TimeText.h"

#include <cstdio>

namespace workbench {

namespace {

constexpr long long UnitsPerMillisecond = 10000;
constexpr long long MillisecondsPerDay = 86400000;

struct CalendarTime {
    long long year;
    int month, day, hour, minute, second, millisecond;
};

long long FloorDivide(long long value, long long divisor) {
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

// Converts days since 1 January 1601 to a Gregorian date. Years begin in March here, so that the leap day
// comes last; 1 March 1600 begins a cycle of 400 years.
void SetDate(long long days, CalendarTime& time) {
    constexpr long long daysPerCycle = 146097;
    constexpr long long fromMarch1600 = 306;
    long long const shifted = days + fromMarch1600;
    long long const cycle = FloorDivide(shifted, daysPerCycle);
    int const day = static_cast<int>(shifted - cycle * daysPerCycle);
    int const year = (day - day / 1460 + day / 36524 - day / 146096) / 365;
    int const dayOfYear = day - (365 * year + year / 4 - year / 100);
    int const month = (5 * dayOfYear + 2) / 153;
    time.day = dayOfYear - (153 * month + 2) / 5 + 1;
    time.month = month < 10 ? month + 3 : month - 9;
    time.year = 1600 + cycle * 400 + year + (time.month <= 2 ? 1 : 0);
}

CalendarTime ToCalendar(long long fileTime, long long localDiff) {
    long long const milliseconds =
        FloorDivide(fileTime, UnitsPerMillisecond) + FloorDivide(localDiff, UnitsPerMillisecond);
    long long const days = FloorDivide(milliseconds, MillisecondsPerDay);
    int const ofDay = static_cast<int>(milliseconds - days * MillisecondsPerDay);
    CalendarTime time{};
    SetDate(days, time);
    time.hour = ofDay / 3600000;
    time.minute = ofDay / 60000 % 60;
    time.second = ofDay / 1000 % 60;
    time.millisecond = ofDay % 1000;
    return time;
}

template <typename... Values>
std::string Format(char const* format, Values... values) {
    char text[64];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::string Seconds(CalendarTime const& t) {
    return Format("%04lld-%02d-%02dT%02d:%02d:%02d", t.year, t.month, t.day, t.hour, t.minute, t.second);
}

}  // namespace

std::string IsoTime(long long fileTime, long long localDiff) {
    CalendarTime const time = ToCalendar(fileTime, localDiff);
    int const minutes = static_cast<int>(localDiff / UnitsPerMillisecond / 60000);
    int const distance = minutes < 0 ? -minutes : minutes;
    return Format("%04lld-%02d-%02dT%02d:%02d:%02d.%03d%c%02d:%02d", time.year, time.month, time.day,
                  time.hour, time.minute, time.second, time.millisecond, minutes < 0 ? '-' : '+',
                  distance / 60, distance % 60);
}

std::string IsoValue(long long fileTime, long long localDiff) {
    CalendarTime const time = ToCalendar(fileTime, localDiff);
    return Seconds(time) + (time.millisecond ? Format(".%03d", time.millisecond) : std::string());
}

std::string ClockTime(long long fileTime, long long localDiff) {
    CalendarTime const time = ToCalendar(fileTime, localDiff);
    return Format("%02d:%02d:%02d", time.hour, time.minute, time.second);
}

std::string AgeText(long long fileTime, long long now) {
    double const seconds =
        now > fileTime ? (static_cast<double>(now) - static_cast<double>(fileTime)) / 1e7 : 0.0;
    if (seconds < 9.95) {
        return Format("%.1f s", seconds);
    }
    if (seconds < 120) {
        return Format("%.0f s", seconds);
    }
    if (seconds < 2 * 3600.0) {
        return Format("%.0f min", seconds / 60);
    }
    return seconds < 2 * 86400.0 ? Format("%.0f h", seconds / 3600) : Format("%.0f d", seconds / 86400);
}

std::string DurationText(long long duration) {
    double const milliseconds = static_cast<double>(duration) / static_cast<double>(UnitsPerMillisecond);
    if (milliseconds < 999.5) {
        return Format(milliseconds < 9.95 ? "%.1f ms" : "%.0f ms", milliseconds);
    }
    return Format("%.2f s", milliseconds / 1000);
}

}  // namespace workbench
