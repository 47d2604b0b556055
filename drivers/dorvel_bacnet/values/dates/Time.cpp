#include "Time.h"

#include "FileTime.h"

namespace {

constexpr unsigned long long UnitsPerHour = 36000000000ULL;
constexpr unsigned long long UnitsPerMinute = 600000000ULL;
constexpr unsigned long long UnitsPerSecond = 10000000ULL;
constexpr unsigned long long UnitsPerHundredth = 100000ULL;

unsigned long long Units(std::uint8_t field, unsigned long long unit) {
    constexpr std::uint8_t Unspecified = 255;
    return field == Unspecified ? 0 : field * unit;
}

}  // namespace

Time::Time(std::uint8_t hourOfDay, std::uint8_t minuteOfHour, std::uint8_t secondOfMinute,
           std::uint8_t hundredthsOfSecond)
    : hour(hourOfDay), minute(minuteOfHour), second(secondOfMinute), hundredths(hundredthsOfSecond) {}

Time::Time(unsigned long long fileTime)
    : hour(static_cast<std::uint8_t>(fileTime / UnitsPerHour)),
      minute(static_cast<std::uint8_t>(fileTime % UnitsPerHour / UnitsPerMinute)),
      second(static_cast<std::uint8_t>(fileTime % UnitsPerMinute / UnitsPerSecond)),
      hundredths(static_cast<std::uint8_t>(fileTime % UnitsPerSecond / UnitsPerHundredth)) {}

unsigned long long Time::ToFileTime() const {
    return Units(hour, UnitsPerHour) + Units(minute, UnitsPerMinute) + Units(second, UnitsPerSecond) +
           Units(hundredths, UnitsPerHundredth);
}

int Time::Compare(Time& other) const {
    return CompareFileTimes(ToFileTime(), other.ToFileTime());
}
