#include "CharacterSets.h"

#include <algorithm>
#include <cstdint>

#include "Printable.h"

namespace standard {

namespace {

enum CharacterSet : std::uint8_t { Utf8 = 0, Dbcs = 1, Ucs4 = 3, Ucs2 = 4, Iso8859 = 5 };

constexpr std::uint32_t Replacement = 0xFFFD;
constexpr std::uint32_t LastCharacter = 0x10FFFF;

bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

void AppendUtf8(std::string& text, std::uint32_t character) {
    if (character > LastCharacter || IsHighSurrogate(character) || IsLowSurrogate(character)) {
        character = Replacement;
    }
    auto const append = [&text](std::uint32_t octet) { text += static_cast<char>(octet); };
    auto const continuation = [&](unsigned shift) { append(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0 | character >> 6);
        continuation(0);
    } else if (character < 0x10000) {
        append(0xE0 | character >> 12);
        continuation(6);
        continuation(0);
    } else {
        append(0xF0 | character >> 18);
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

// The units of `width` octets after the number of the set, most significant octet first. An incomplete last
// unit is a replacement character.
std::vector<std::uint32_t> Units(Octets const& content, std::size_t width) {
    std::vector<std::uint32_t> units;
    for (std::size_t at = 1; at < content.size(); at += width) {
        std::uint32_t unit = 0;
        for (std::size_t i = at; i < at + width && i < content.size(); ++i) {
            unit = unit << 8 | OctetValue(content[i]);
        }
        units.push_back(at + width <= content.size() ? unit : Replacement);
    }
    return units;
}

std::string TextOfUcs2(Octets const& content) {
    std::vector<std::uint32_t> const units = Units(content, 2);
    std::string text;
    for (std::size_t i = 0; i < units.size(); ++i) {
        if (IsHighSurrogate(units[i]) && i + 1 < units.size() && IsLowSurrogate(units[i + 1])) {
            AppendUtf8(text, 0x10000 + ((units[i] & 0x3FF) << 10) + (units[i + 1] & 0x3FF));
            ++i;
        } else {
            AppendUtf8(text, units[i]);
        }
    }
    return text;
}

std::string TextOfUnits(Octets const& content, std::size_t width) {
    std::string text;
    for (std::uint32_t const unit : Units(content, width)) {
        AppendUtf8(text, unit);
    }
    return text;
}

// The number of the code page has two octets. ASCII is the same in all of them.
std::optional<std::string> TextOfDbcs(Octets const& content) {
    constexpr std::size_t head = 3;
    bool const isAscii =
        content.size() >= head && std::all_of(content.begin() + head, content.end(),
                                              [](char octet) { return OctetValue(octet) < 0x80; });
    return isAscii ? std::optional<std::string>(std::string(content.begin() + head, content.end()))
                   : std::nullopt;
}

}  // namespace

std::optional<std::string> TextOfCharacterString(Octets const& content) {
    if (content.empty()) {
        return std::nullopt;
    }
    switch (OctetValue(content[0])) {
        case Utf8:
            return tools::ValidUtf8({content.data() + 1, content.size() - 1});
        case Dbcs:
            return TextOfDbcs(content);
        case Ucs4:
            return TextOfUnits(content, 4);
        case Ucs2:
            return TextOfUcs2(content);
        case Iso8859:
            return TextOfUnits(content, 1);
        default:
            return std::nullopt;
    }
}

}  // namespace standard
