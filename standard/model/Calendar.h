#pragma once

#include <array>
#include <chrono>
#include <cstdint>

namespace standard {

// A BACnet Date (clause 20.2.12): year less 1900, month 1-12, day 1-31, weekday 1 = Monday to 7 = Sunday.
// 255 in any of them means "any".
using CalendarDate = std::array<std::uint8_t, 4>;

// A BACnet Time (clause 20.2.13): hour, minute, second, hundredths; 255 means "any".
using TimeOfDay = std::array<std::uint8_t, 4>;

constexpr std::uint8_t Unspecified = 255;
constexpr CalendarDate AnyDate{Unspecified, Unspecified, Unspecified, Unspecified};
constexpr TimeOfDay AnyTime{Unspecified, Unspecified, Unspecified, Unspecified};

// 1 for Monday to 7 for Sunday, in the Gregorian calendar.
int WeekdayOf(int year, int month, int day);
// 28 to 31.
int DaysInMonth(int year, int month);

// The date and the time of day of an instant, which is counted from 1 January 1970 00:00.
CalendarDate DateOf(std::chrono::milliseconds instant);
TimeOfDay TimeOf(std::chrono::milliseconds instant);

}  // namespace standard
