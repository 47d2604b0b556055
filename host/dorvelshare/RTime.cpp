#include "dorvelshare/RTime.h"

#include <charconv>

#include "Calendar.h"
#include "dorvelshare/HostEnvironment.h"

long long getRDateTime() {
    return dorvel::Environment().Now();
}

long long GetLocalTimeDiff() {
    return dorvel::Environment().LocalTimeDiff();
}

FileTime ULLtoFT(unsigned long long fileTime) {
    return {static_cast<unsigned int>(fileTime), static_cast<unsigned int>(fileTime >> 32)};
}

int FileTimeToRTime(FileTime const* fileTime, RTime* result) {
    unsigned long long const ticks =
        static_cast<unsigned long long>(fileTime->dwHighDateTime) << 32 | fileTime->dwLowDateTime;
    CalendarDate const date = DateOfDays(static_cast<long long>(ticks / TicksPerDay));
    if (date.year > LastYear) {
        return -1;
    }
    auto const milliseconds = static_cast<unsigned int>(ticks % TicksPerDay / (TicksPerSecond / 1000));
    result->year = static_cast<unsigned short>(date.year);
    result->month = static_cast<unsigned short>(date.month);
    result->day = static_cast<unsigned short>(date.day);
    result->hour = static_cast<unsigned short>(milliseconds / 3'600'000);
    result->minute = static_cast<unsigned short>(milliseconds / 60'000 % 60);
    result->second = static_cast<unsigned short>(milliseconds / 1'000 % 60);
    result->millisecond = static_cast<unsigned short>(milliseconds % 1'000);
    return 0;
}

char* itoa(int value, char* buffer, int radix) {
    constexpr int longest = 33;  // a sign and 32 binary digits
    char* end = buffer;
    if (radix >= 2 && radix <= 36) {
        end = std::to_chars(buffer, buffer + longest, value, radix).ptr;
    }
    *end = 0;
    return buffer;
}
