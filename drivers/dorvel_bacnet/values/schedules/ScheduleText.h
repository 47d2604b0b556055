#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "DateValue.h"

// Functions that read the text of a schedule. A field that is not a number throws std::invalid_argument or
// std::out_of_range with "stoi".

// The parts of a text between delimiters, as std::getline reads them: a delimiter at the end adds no empty
// part, and an empty text has no parts.
std::vector<std::string> SplitText(std::string const& text, char delimiter);

// The number in at most `count` characters from `position`; `wildcard` if the first is "*". Missing
// characters are not a number.
int NumberOrWildcard(std::string const& text, std::size_t position, std::size_t count, int wildcard);

// A date from its nine characters: weekday, day, month and year ("315032024"). A field that starts with "*"
// is unspecified. Any other number of characters throws std::runtime_error with `wrongLength`.
DateValue DateFromText(std::string const& text, char const* wrongLength);

// The octets of a text of hexadecimal digits, two per octet; a single last digit makes an octet too. A pair
// that is not hexadecimal gives 0.
std::vector<char> HexToBytes(std::string const& text);
