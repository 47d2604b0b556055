#include "TextEncoding.h"

#include <algorithm>
#include <cstdint>

#include "CharacterSets.h"
#include "Printable.h"

namespace workbench {

namespace {

// The characters of Windows-1252 from 0x80 to 0x9F; 0 where it has none.
constexpr std::uint16_t Windows1252[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                         0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                         0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                         0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view LittleEndianMark = "\xFF\xFE";
constexpr std::string_view BigEndianMark = "\xFE\xFF";

bool StartsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

// Appends a character below U+10000.
void Append(std::string& text, unsigned character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    if (character < 0x800) {
        text += static_cast<char>(0xC0 | character >> 6);
    } else {
        text += static_cast<char>(0xE0 | character >> 12);
        text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
    }
    text += static_cast<char>(0x80 | (character & 0x3F));
}

DecodedText OfWindows1252(std::string_view octets) {
    DecodedText decoded{{}, TextEncoding::Windows1252, false};
    decoded.text.reserve(octets.size() + octets.size() / 8);
    for (char const octet : octets) {
        unsigned const code = static_cast<unsigned char>(octet);
        bool const isFromTable = code >= 0x80 && code < 0xA0;
        unsigned const character = isFromTable ? Windows1252[code - 0x80] : code;
        decoded.hasInvalidOctets |= isFromTable && character == 0;
        Append(decoded.text, isFromTable && character == 0 ? 0xFFFD : character);
    }
    return decoded;
}

DecodedText OfUtf16(std::string_view octets, bool isLittleEndian) {
    constexpr char Ucs2 = 4;
    standard::Octets content{Ucs2};
    content.reserve(octets.size() + 1);
    std::size_t const whole = octets.size() / 2 * 2;
    for (std::size_t i = 0; i < whole; i += 2) {
        content.push_back(octets[isLittleEndian ? i + 1 : i]);
        content.push_back(octets[isLittleEndian ? i : i + 1]);
    }
    std::string text = standard::TextOfCharacterString(content).value_or("");
    bool const isWhole = whole == octets.size() && text.find("\xEF\xBF\xBD") == std::string::npos;
    return {std::move(text), TextEncoding::Utf16, !isWhole};
}

// Whether most of the first characters have a zero octet at the index, which is 0 or 1.
bool HasZeros(std::string_view octets, std::size_t index) {
    std::size_t const length = std::min<std::size_t>(octets.size() / 2 * 2, 64);
    std::size_t zeros = 0;
    for (std::size_t i = index; i < length; i += 2) {
        zeros += octets[i] == '\0' ? 1 : 0;
    }
    return length >= 4 && zeros * 4 > length;
}

bool IsAscii(std::string_view octets) {
    return std::all_of(octets.begin(), octets.end(),
                       [](char octet) { return static_cast<unsigned char>(octet) < 0x80; });
}

}  // namespace

DecodedText DecodeText(std::string_view octets) {
    if (StartsWith(octets, Utf8Mark)) {
        std::string_view const rest = octets.substr(Utf8Mark.size());
        std::string text = tools::ValidUtf8(rest);
        bool const isWhole = text == rest;
        return {std::move(text), TextEncoding::Utf8, !isWhole};
    }
    if (StartsWith(octets, LittleEndianMark) || StartsWith(octets, BigEndianMark)) {
        return OfUtf16(octets.substr(2), StartsWith(octets, LittleEndianMark));
    }
    if (HasZeros(octets, 0) || HasZeros(octets, 1)) {
        return OfUtf16(octets, HasZeros(octets, 1));
    }
    if (IsAscii(octets)) {
        return {std::string(octets), TextEncoding::Ascii, false};
    }
    std::string text = tools::ValidUtf8(octets);
    return text == octets ? DecodedText{std::move(text), TextEncoding::Utf8, false} : OfWindows1252(octets);
}

}  // namespace workbench
