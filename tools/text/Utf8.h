#pragma once

#include <cstddef>
#include <string_view>

namespace tools {

// One character of a text in UTF-8.
struct Character {
    long codePoint;      // -1 for an octet that does not begin a character
    std::size_t length;  // in octets, 1 for such an octet
};

// The character that begins at this octet of the text, which must exist.
Character CharacterAt(std::string_view text, std::size_t place);

}  // namespace tools
