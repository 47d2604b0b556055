#pragma once

#include <string>

// Numbers with a decimal point, as texts of the runtime have them. Both operations work as in the C locale
// whatever locale the host has set, since a decimal comma would part the fields of a schedule.

// The number as "%f" prints it: six decimals, or "nan" and "inf" with their sign.
std::string DecimalText(double number);

// The number that a text starts with, as std::stod reads it: a text that starts with none throws
// std::invalid_argument, one that a double cannot hold std::out_of_range, both with "stod".
double DecimalNumber(std::string const& text);
