#include "HexText.h"

namespace tools {

std::string HexText(std::string_view octets, HexDigits digits) {
    char const* const digit = digits == HexDigits::Lower ? "0123456789abcdef" : "0123456789ABCDEF";
    std::string text;
    text.reserve(2 * octets.size());
    for (unsigned char const octet : octets) {
        text += digit[octet >> 4];
        text += digit[octet & 15];
    }
    return text;
}

std::string HexText(std::vector<char> const& octets, HexDigits digits) {
    return HexText(std::string_view(octets.data(), octets.size()), digits);
}

}  // namespace tools
