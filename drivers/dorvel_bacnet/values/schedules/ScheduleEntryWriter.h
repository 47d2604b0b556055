#pragma once

#include <string>

#include "ComplexTag.h"
#include "Date.h"

// Where the two kinds of schedule differ in their entries.
struct ScheduleEntryStyle {
    // A Null value has no entry; else it has one of the time and an empty type.
    bool omitsNull;
    // Stands behind the digits of an Unsigned and counts for its length.
    char const* unsignedSuffix;
};

inline constexpr ScheduleEntryStyle weeklyEntries = {true, "d"};
inline constexpr ScheduleEntryStyle exceptionEntries = {false, ""};

// Appends a list of times and values, two tags each, as entries of the grammar told at ScheduleValue. Every
// entry but that of the first pair has a "," ahead of it, so a list whose first Null is omitted starts with
// one. Numbers are written by their low 32 bits, and a value with a tag number above 12 ends its entry
// behind the time. Tags of another shape throw ParseException.
void AppendEntries(std::string& text, ComplexTag& list, ScheduleEntryStyle const& style);

// An octet as two decimal digits, or three from 100 on.
std::string TwoDigits(unsigned char octet);

// The nine characters of a date: weekday, day, month, year. Only as many digits of each field as it has
// room for are kept, so an unspecified weekday is 2, such a day or month 25, and such a year 2155.
std::string DateText(Date const& date);
