#pragma once

#include <cstddef>
#include <string_view>

namespace tools {

// One character of a text in UTF-8.
struct Character {
    long codePoint;      // -1 for an octet that does not begin a character
    std::size_t length;  // in octets, 1 for such an octet
};

// The character of several octets that begins there; any other octet is none.
Character LongCharacterAt(std::string_view text, std::size_t place);

// The character that begins at this octet of the text, which must exist. Most are ASCII.
inline Character CharacterAt(std::string_view text, std::size_t place) {
    auto const first = static_cast<unsigned char>(text[place]);
    return first < 0x80 ? Character{first, 1} : LongCharacterAt(text, place);
}

}  // namespace tools
