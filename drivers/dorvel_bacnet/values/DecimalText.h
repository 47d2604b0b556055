#pragma once

#include <string>

// Numbers with a decimal point in the texts of the runtime. Both functions write and read as in the C locale,
// whatever locale the host has set: a decimal comma would split a field of a schedule. Any thread may call
// them.

// The number as "%f" prints it: six decimals, or "nan" and "inf" with their sign.
std::string DecimalText(double number);

// The number at the start of a text, as std::stod reads it. A text without one throws std::invalid_argument,
// a number that does not fit a double std::out_of_range, both with "stod".
double DecimalNumber(std::string const& text);
