#include "Date.h"

#include <array>
#include <cstddef>

#include "FileTime.h"

namespace {

constexpr std::uint8_t Unspecified = 255;
constexpr int DaysFrom1601To1900 = 109207;
constexpr long long UnitsPerDay = 864000000000LL;

int DaysOfYear(int year) {
    return Date::IsLeapYear(year) ? 366 : 365;
}

constexpr std::array<int, 13> MonthDays{0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr std::size_t February = 2;

// The days of a month of a year; 0 after the end of the table.
int DaysOfMonth(int year, std::size_t month) {
    int const leapDay = month == February && Date::IsLeapYear(year) ? 1 : 0;
    return month < MonthDays.size() ? MonthDays[month] + leapDay : 0;
}

}  // namespace

Date::Date(std::uint8_t yearSince1900, std::uint8_t monthOfYear, std::uint8_t dayOfMonth,
           std::uint8_t dayOfWeek)
    : year(yearSince1900), month(monthOfYear), day(dayOfMonth), weekday(dayOfWeek) {}

Date::Date(unsigned long long fileTime) {
    int const days = static_cast<int>(fileTime / UnitsPerDay);
    int sum = DaysFrom1601To1900;
    int walkedYear = 1900;
    while (sum < days) {
        sum += DaysOfYear(walkedYear);
        ++walkedYear;
    }
    if (days > DaysFrom1601To1900) {
        year = static_cast<std::uint8_t>(walkedYear - 1901);
    }
    int const dayOfYear = days - (sum - DaysOfYear(walkedYear));

    int const tableYear = 1900 + year;
    std::size_t walkedMonth = 0;
    int monthSum = 0;
    // Day 366 of an ordinary year ends the walk in December.
    while (monthSum < dayOfYear && walkedMonth < 12) {
        ++walkedMonth;
        monthSum += DaysOfMonth(tableYear, walkedMonth);
    }
    month = static_cast<std::uint8_t>(walkedMonth);
    day = static_cast<std::uint8_t>(dayOfYear - monthSum + DaysOfMonth(tableYear, walkedMonth + 1));
}

bool Date::IsLeapYear(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

unsigned long long Date::ToFileTime() const {
    long long days = 0;
    if (year != Unspecified) {
        days = DaysFrom1601To1900;
        for (int walkedYear = 1900; walkedYear < 1900 + year; ++walkedYear) {
            days += DaysOfYear(walkedYear);
        }
    }
    if (month != Unspecified) {
        for (std::size_t walkedMonth = 0; walkedMonth < month; ++walkedMonth) {
            days += DaysOfMonth(1900 + year, walkedMonth);
        }
    }
    if (day != Unspecified) {
        days += day - 1;
    }
    return static_cast<unsigned long long>(days * UnitsPerDay);
}

int Date::Compare(Date& other) const {
    return CompareFileTimes(ToFileTime(), other.ToFileTime());
}
