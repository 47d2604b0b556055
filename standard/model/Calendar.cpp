#include "Calendar.h"

namespace standard {

namespace {

constexpr std::int64_t MillisecondsPerDay = 86'400'000;

bool IsLeap(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

// Days from 1 January 1970 to the first day of a year after it.
std::int64_t DaysBefore(int year) {
    std::int64_t const past = year - 1;
    std::int64_t const leapDays = past / 4 - past / 100 + past / 400;
    return (past * 365 + leapDays) - (1969LL * 365 + 1969 / 4 - 1969 / 100 + 1969 / 400);
}

// The number of the day, and the milliseconds since its midnight. Correct before 1970 too.
std::int64_t DayOf(std::chrono::milliseconds instant) {
    std::int64_t const count = instant.count();
    return count / MillisecondsPerDay - (count % MillisecondsPerDay < 0 ? 1 : 0);
}

int WeekdayOfDay(std::int64_t day) {
    return static_cast<int>(((day + 3) % 7 + 7) % 7) + 1;  // 1 January 1970 was a Thursday
}

}  // namespace

int DaysInMonth(int year, int month) {
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return days[month - 1] + (month == 2 && IsLeap(year) ? 1 : 0);
}

int WeekdayOf(int year, int month, int day) {
    std::int64_t count = DaysBefore(year) + day - 1;
    for (int before = 1; before < month; ++before) {
        count += DaysInMonth(year, before);
    }
    return WeekdayOfDay(count);
}

CalendarDate DateOf(std::chrono::milliseconds instant) {
    std::int64_t const day = DayOf(instant);
    int year = 1970 + static_cast<int>(day / 366);
    while (DaysBefore(year + 1) <= day) {
        ++year;
    }
    auto rest = static_cast<int>(day - DaysBefore(year));
    int month = 1;
    while (rest >= DaysInMonth(year, month)) {
        rest -= DaysInMonth(year, month++);
    }
    return {static_cast<std::uint8_t>(year - 1900), static_cast<std::uint8_t>(month),
            static_cast<std::uint8_t>(rest + 1), static_cast<std::uint8_t>(WeekdayOfDay(day))};
}

TimeOfDay TimeOf(std::chrono::milliseconds instant) {
    std::int64_t const left = instant.count() - DayOf(instant) * MillisecondsPerDay;
    return {static_cast<std::uint8_t>(left / 3'600'000), static_cast<std::uint8_t>(left / 60'000 % 60),
            static_cast<std::uint8_t>(left / 1000 % 60), static_cast<std::uint8_t>(left / 10 % 100)};
}

}  // namespace standard
