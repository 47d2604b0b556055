#pragma once

#include <cstdint>

// A time of day of ASHRAE 135 clause 20.2.13, its fields as on the wire; 255 is "unspecified".
struct Time {
    Time() = default;
    Time(std::uint8_t hourOfDay, std::uint8_t minuteOfHour, std::uint8_t secondOfMinute,
         std::uint8_t hundredthsOfSecond);
    // From a count of 100 ns. The hour is not reduced to a day but cut to an octet.
    explicit Time(unsigned long long fileTime);

    // The time since midnight in units of 100 ns; unspecified fields add nothing.
    unsigned long long ToFileTime() const;
    // 0 for any two times: the host relies on a time never counting as changed.
    int Compare(Time& other) const;

    std::uint8_t hour = 0;
    std::uint8_t minute = 0;
    std::uint8_t second = 0;
    std::uint8_t hundredths = 0;
};
