#pragma once

#include "HostApi.h"

// Times of the runtime are file times: 100-nanosecond units since 1 January 1601.

// The current time, UTC, from the environment's clock.
DORVEL_HOST_API long long getRDateTime();

// Local time minus UTC, in file-time units.
DORVEL_HOST_API long long GetLocalTimeDiff();

// A file time as two halves.
struct FileTime {
    unsigned int dwLowDateTime;
    unsigned int dwHighDateTime;
};

// A calendar record; month 1 to 12, day 1 to 31.
struct RTime {
    unsigned short year;
    unsigned short month;
    unsigned short day;
    unsigned short hour;
    unsigned short minute;
    unsigned short second;
    unsigned short millisecond;
};

DORVEL_HOST_API FileTime ULLtoFT(unsigned long long fileTime);

// The calendar date of a file time, without a time zone. Returns 0, or -1 for a time after the year 30827.
DORVEL_HOST_API int FileTimeToRTime(FileTime const* fileTime, RTime* result);

// Writes the number in a radix from 2 to 36, with lower-case letters. buffer has at least 34 characters and
// is returned. Any other radix gives an empty text.
DORVEL_HOST_API char* itoa(int value, char* buffer, int radix);
