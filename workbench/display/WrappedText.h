#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

// The printable text in lines of at most width columns, broken after blanks where there are some. At least
// one line. A character that is wider than a line has one for itself.
std::vector<std::string> Wrapped(std::string_view text, std::size_t width);

}  // namespace workbench
