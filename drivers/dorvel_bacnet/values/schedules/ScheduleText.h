#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "DateValue.h"

// What it takes to read a schedule's text. A number that is none throws std::invalid_argument or
// std::out_of_range with "stoi".

// The pieces of a text between the delimiters, as lines are read: a delimiter at the very end yields no
// further, empty piece, and an empty text yields none at all.
std::vector<std::string> SplitText(std::string const& text, char delimiter);

// The number in the characters from `position`, at most `count` of them; `wildcard` if the first is "*".
// Characters that the text does not have are no number.
int NumberOrWildcard(std::string const& text, std::size_t position, std::size_t count, int wildcard);

// A date from the nine characters of weekday, day, month and year ("315032024"), where a field that starts
// with "*" is unspecified. Another number of characters throws std::runtime_error with `wrongLength`.
DateValue DateFromText(std::string const& text, char const* wrongLength);

// The octets of a text of hexadecimal digits, two to an octet; a single last one makes an octet too. A
// piece that is not hexadecimal makes 0.
std::vector<char> HexToBytes(std::string const& text);
