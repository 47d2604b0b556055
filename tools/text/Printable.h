#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tools {

// Texts come from devices and from projects. On a terminal or in a line of output they must stay on their
// line and must not control the terminal. Widths are columns of a terminal.

// The text as valid UTF-8 without control characters: "\n" and the like are written as escapes, "\x1B" for
// others, and octets that are not UTF-8 become U+FFFD.
std::string Printable(std::string_view text);
// The same, in at most `longest` octets, or as many of its characters as these hold and "..." after them.
std::string Printable(std::string_view text, std::size_t longest);

// The printable text in quotation marks, for a message, cut after 60 octets.
std::string Quoted(std::string_view text);

// The text with octets that are not UTF-8 replaced by U+FFFD.
std::string ValidUtf8(std::string_view text);

// The columns that a printable text takes.
std::size_t DisplayWidth(std::string_view text);

// The printable text in exactly width columns: filled with blanks, or cut, with "…" in the last column.
std::string FitTo(std::string_view text, std::size_t width);
// The same, filled on the left side.
std::string FitToRight(std::string_view text, std::size_t width);

}  // namespace tools
