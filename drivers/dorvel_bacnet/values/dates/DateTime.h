#pragma once

#include "Date.h"
#include "Time.h"

// BACnetDateTime of ASHRAE 135 clause 21.
struct DateTime {
    DateTime() = default;
    DateTime(Date datePart, Time timePart);
    // Both parts read the whole file time, so the hour of a calendar time has no meaning.
    explicit DateTime(unsigned long long fileTime);

    // The sum of the two parts.
    unsigned long long ToFileTime() const;
    // Returns 0 for any two values (FileTime.h).
    int Compare(DateTime& other) const;

    Date date;
    Time time;
};
