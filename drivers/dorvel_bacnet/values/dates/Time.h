#pragma once

#include <cstdint>

// A time of day (ASHRAE 135 clause 20.2.13) with its fields as on the wire; 255 means "unspecified".
struct Time {
    Time() = default;
    Time(std::uint8_t hourOfDay, std::uint8_t minuteOfHour, std::uint8_t secondOfMinute,
         std::uint8_t hundredthsOfSecond);
    // The time of a file time. The hour is not reduced to a day; its low eight bits are kept.
    explicit Time(unsigned long long fileTime);

    // The time since midnight in units of 100 ns; unspecified fields add nothing.
    unsigned long long ToFileTime() const;
    // Returns 0 for any two times (FileTime.h).
    int Compare(Time& other) const;

    std::uint8_t hour = 0;
    std::uint8_t minute = 0;
    std::uint8_t second = 0;
    std::uint8_t hundredths = 0;
};
