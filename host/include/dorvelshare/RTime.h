#pragma once

#include "HostApi.h"

// Times of the runtime are file times: 100-nanosecond units since 1 January 1601.

// The time now, UTC, from the environment's clock.
DORVEL_HOST_API long long getRDateTime();

// Local time less UTC, in file-time units.
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

// The calendar date of a file time, as it stands (no time zone). 0, or -1 for a time beyond the year 30827.
DORVEL_HOST_API int FileTimeToRTime(FileTime const* fileTime, RTime* result);

// The number as text in a radix from 2 to 36, small letters; buffer takes at least 34 characters and is the
// result. Another radix gives an empty text.
DORVEL_HOST_API char* itoa(int value, char* buffer, int radix);
