#include "Utf8.h"

namespace tools {

namespace {

unsigned OctetAt(std::string_view text, std::size_t place) {
    return static_cast<unsigned char>(text[place]);
}

// The length of a character by its first octet; 0 for an octet that cannot be the first of several.
std::size_t AnnouncedLength(unsigned first) {
    if (first >= 0xC2 && first <= 0xDF) {
        return 2;
    }
    if ((first & 0xF0) == 0xE0) {
        return 3;
    }
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

bool IsCharacter(long codePoint, std::size_t length) {
    static constexpr long smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    bool const surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    return codePoint >= smallest[length] && codePoint <= 0x10FFFF && !surrogate;
}

}  // namespace

Character LongCharacterAt(std::string_view text, std::size_t place) {
    unsigned const first = OctetAt(text, place);
    std::size_t const length = AnnouncedLength(first);
    if (length == 0 || place + length > text.size()) {
        return {-1, 1};
    }
    long codePoint = static_cast<long>(first & (0x7Fu >> length));
    for (std::size_t i = 1; i < length; ++i) {
        unsigned const next = OctetAt(text, place + i);
        if ((next & 0xC0) != 0x80) {
            return {-1, 1};
        }
        codePoint = codePoint * 64 + static_cast<long>(next & 0x3F);
    }
    return IsCharacter(codePoint, length) ? Character{codePoint, length} : Character{-1, 1};
}

}  // namespace tools
