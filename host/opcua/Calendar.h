#pragma once

// The proleptic Gregorian calendar from 1601 on, in days since 1 January 1601.

constexpr long long TicksPerSecond = 10'000'000;
constexpr long long TicksPerDay = 86'400 * TicksPerSecond;
constexpr int LastYear = 30827;  // the last whole year of a file time

struct CalendarDate {
    int year;
    int month;  // from 1
    int day;    // from 1
};

constexpr bool IsLeap(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

constexpr int DaysOfMonth(int year, int month) {
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeap(year) ? 29 : days[month - 1];
}

// The date of a day; days is not negative.
constexpr CalendarDate DateOfDays(long long days) {
    // A cycle of 400 years starts with 1601, so the leap day comes last in every part of it; only the last
    // century and the last year of four are a day longer than the others.
    auto const take = [&days](long long length, long long most) {
        long long const count = days / length < most ? days / length : most;
        days -= count * length;
        return static_cast<int>(count);
    };
    int year = 1601 + 400 * take(146'097, days);
    year += 100 * take(36'524, 3);
    year += 4 * take(1'461, 24);
    year += take(365, 3);
    int month = 1;
    while (days >= DaysOfMonth(year, month)) {
        days -= DaysOfMonth(year, month++);
    }
    return {year, month, static_cast<int>(days) + 1};
}

// The day of an existing date from 1601 on.
constexpr long long DaysOfDate(CalendarDate const& date) {
    long long const past = date.year - 1601;
    long long days = past * 365 + past / 4 - past / 100 + past / 400 + date.day - 1;
    for (int month = 1; month < date.month; ++month) {
        days += DaysOfMonth(date.year, month);
    }
    return days;
}
