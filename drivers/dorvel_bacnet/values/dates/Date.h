#pragma once

#include <cstdint>
#include <vector>

// A date (ASHRAE 135 clause 20.2.12) with its fields as on the wire; 255 means "unspecified". A file time is
// a count of 100 ns since 1 January 1601.
struct Date {
    Date() = default;
    Date(std::uint8_t yearSince1900, std::uint8_t monthOfYear, std::uint8_t dayOfMonth,
         std::uint8_t dayOfWeek);
    // The date of a file time. It is not the date of the calendar: the walk subtracts the length of the year
    // after the one it is in, and counts the day with the length of the month after it. Installed systems
    // rely on this. The weekday is 255.
    explicit Date(unsigned long long fileTime);

    static bool IsLeapYear(int year);

    // The file time of midnight. An unspecified year, month or day adds nothing; the weekday is not used.
    unsigned long long ToFileTime() const;
    // Returns 0 for any two dates (FileTime.h).
    int Compare(Date& other) const;

    // Days by month, January at index 1. The conversions use constants instead, so they depend neither on the
    // order of static initialisation nor on changes to these lists.
    inline static std::vector<char> originalYearMonthDays{0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    inline static std::vector<char> laepYearMonthDays{0, 31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

    std::uint8_t year = 255;
    std::uint8_t month = 255;
    std::uint8_t day = 255;
    std::uint8_t weekday = 255;
};
