#include "Time.h"

#include "FileTime.h"

namespace {

constexpr unsigned long long unitsPerHour = 36000000000ULL;
constexpr unsigned long long unitsPerMinute = 600000000ULL;
constexpr unsigned long long unitsPerSecond = 10000000ULL;
constexpr unsigned long long unitsPerHundredth = 100000ULL;

unsigned long long Units(std::uint8_t field, unsigned long long unit) {
    constexpr std::uint8_t unspecified = 255;
    return field == unspecified ? 0 : field * unit;
}

}  // namespace

Time::Time(std::uint8_t hourOfDay, std::uint8_t minuteOfHour, std::uint8_t secondOfMinute,
           std::uint8_t hundredthsOfSecond)
    : hour(hourOfDay), minute(minuteOfHour), second(secondOfMinute), hundredths(hundredthsOfSecond) {}

Time::Time(unsigned long long fileTime)
    : hour(static_cast<std::uint8_t>(fileTime / unitsPerHour)),
      minute(static_cast<std::uint8_t>(fileTime % unitsPerHour / unitsPerMinute)),
      second(static_cast<std::uint8_t>(fileTime % unitsPerMinute / unitsPerSecond)),
      hundredths(static_cast<std::uint8_t>(fileTime % unitsPerSecond / unitsPerHundredth)) {}

unsigned long long Time::ToFileTime() const {
    return Units(hour, unitsPerHour) + Units(minute, unitsPerMinute) + Units(second, unitsPerSecond) +
           Units(hundredths, unitsPerHundredth);
}

int Time::Compare(Time& other) const {
    return CompareFileTimes(ToFileTime(), other.ToFileTime());
}
