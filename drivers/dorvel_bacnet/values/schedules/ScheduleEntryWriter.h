#pragma once

#include <string>

#include "ComplexTag.h"
#include "Date.h"

// The differences between the entries of the two kinds of schedule.
struct ScheduleEntryStyle {
    // A Null has no entry; otherwise it has an entry with the time and an empty type.
    bool omitsNull;
    // Follows the digits of an Unsigned and counts for the length.
    char const* unsignedSuffix;
};

inline constexpr ScheduleEntryStyle WeeklyEntries = {true, "d"};
inline constexpr ScheduleEntryStyle ExceptionEntries = {false, ""};

// Appends a list of times and values, two tags each, as entries of the grammar in ScheduleValue.h. Every
// entry but that of the first pair starts with a ",", so the text of a list whose first Null is omitted
// starts with one. Numbers are written by their low 32 bits. A value with a tag number above 12 gives an
// entry that ends after the time. Tags of another shape throw ParseException.
void AppendEntries(std::string& text, ComplexTag& list, ScheduleEntryStyle const& style);

// Appends an octet as two decimal digits; three from 100 on.
void AppendTwoDigits(std::string& text, unsigned octet);

// The nine characters of a date: weekday, day, month, year. Each field keeps only as many digits as it has
// room for, so an unspecified weekday is 2, an unspecified day or month 25, and an unspecified year 2155.
std::string DateText(Date const& date);
