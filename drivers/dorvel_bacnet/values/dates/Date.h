#pragma once

#include <cstdint>
#include <vector>

// A date of ASHRAE 135 clause 20.2.12, its fields as on the wire; 255 is "unspecified". A file time is a
// count of 100 ns since 1 January 1601.
struct Date {
    Date() = default;
    Date(std::uint8_t yearSince1900, std::uint8_t monthOfYear, std::uint8_t dayOfMonth,
         std::uint8_t dayOfWeek);
    // The date that the host takes a file time for. This is not the calendar's: the year's length is
    // subtracted one year late and the day is counted from the month behind. Weekday is 255.
    explicit Date(unsigned long long fileTime);

    static bool IsLeapYear(int year);

    // Midnight of the date. An unspecified year, month or day adds nothing; the weekday is not used.
    unsigned long long ToFileTime() const;
    // 0 for any two dates: the host relies on a date never counting as changed.
    int Compare(Date& other) const;

    // Days by month, January at index 1. The conversions use constants instead, so they depend neither on the
    // order of static initialisation nor on what is done to these lists.
    inline static std::vector<char> originalYearMonthDays{0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    inline static std::vector<char> laepYearMonthDays{0, 31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

    std::uint8_t year = 255;
    std::uint8_t month = 255;
    std::uint8_t day = 255;
    std::uint8_t weekday = 255;
};
