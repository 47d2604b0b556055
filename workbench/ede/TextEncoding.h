#pragma once

#include <string>
#include <string_view>

namespace workbench {

// The character set of a text file.
enum class TextEncoding { Ascii, Utf8, Utf16, Windows1252 };

// A text file in UTF-8, without a byte order mark.
struct DecodedText {
    std::string text;
    TextEncoding encoding = TextEncoding::Ascii;
    bool hasInvalidOctets = false;  // they are U+FFFD in the text
};

// UTF-8 and UTF-16 are recognised by a byte order mark, and without one by their form: UTF-16 by the zero
// octets of its first characters, UTF-8 because it is valid. Everything else is Windows-1252, which has the
// printable characters of Latin-1 at the same codes.
DecodedText DecodeText(std::string_view octets);

}  // namespace workbench
