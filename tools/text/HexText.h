#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tools {

enum class HexDigits { Lower, Upper };

// Two hexadecimal digits for each octet: "0aff" or "0AFF".
std::string HexText(std::string_view octets, HexDigits digits);
std::string HexText(std::vector<char> const& octets, HexDigits digits);

}  // namespace tools
