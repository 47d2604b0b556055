#pragma once

#include "Date.h"
#include "Time.h"

// BACnetDateTime of ASHRAE 135 clause 21.
struct DateTime {
    DateTime() = default;
    DateTime(Date datePart, Time timePart);
    // Both parts from the whole file time, so the hour is meaningless for a calendar time.
    explicit DateTime(unsigned long long fileTime);

    // The sum of the two parts.
    unsigned long long ToFileTime() const;
    // 0 for any two of them, as for dates and times.
    int Compare(DateTime& other) const;

    Date date;
    Time time;
};
