#include "TextEncoding.h"

#include <gtest/gtest.h>

using workbench::DecodedText;
using workbench::DecodeText;
using workbench::TextEncoding;

namespace {

void ExpectText(std::string const& octets, TextEncoding encoding, std::string const& text,
                bool isWhole = true) {
    DecodedText const decoded = DecodeText(octets);
    EXPECT_EQ(decoded.text, text);
    EXPECT_EQ(decoded.encoding, encoding);
    EXPECT_EQ(decoded.hasInvalidOctets, !isWhole);
}

}  // namespace

TEST(TextEncoding, KeepsUtf8AndRemovesItsByteOrderMark) {
    ExpectText("a", TextEncoding::Ascii, "a");
    ExpectText("\xC2\xB0 C", TextEncoding::Utf8, "° C");
    ExpectText("\xEF\xBB\xBF\xC2\xB0 C", TextEncoding::Utf8, "° C");
    ExpectText("\xEF\xBB\xBF x\xFF", TextEncoding::Utf8, " x\xEF\xBF\xBD", false);
}

TEST(TextEncoding, ReadsOtherOctetsAsWindows1252) {
    ExpectText("Geb\xE4ude \x80 \xB0 C", TextEncoding::Windows1252, "Gebäude € ° C");
    ExpectText("\x81\xFF", TextEncoding::Windows1252, "\xEF\xBF\xBDÿ", false);
}

TEST(TextEncoding, ReadsUtf16OfBothOrdersWithAndWithoutAMark) {
    ExpectText({'\xFF', '\xFE', 'a', 0, '\xB0', 0}, TextEncoding::Utf16, "a°");
    ExpectText({'\xFE', '\xFF', 0, 'a', 0, '\xB0'}, TextEncoding::Utf16, "a°");
    ExpectText({'a', 0, ';', 0, '\xB0', 0}, TextEncoding::Utf16, "a;°");
    ExpectText({0, 'a', 0, ';', 0, '\xB0'}, TextEncoding::Utf16, "a;°");
}

TEST(TextEncoding, NotesAUtf16TextThatIsCutInACharacter) {
    ExpectText({'\xFF', '\xFE', 'a', 0, 'b'}, TextEncoding::Utf16, "a", false);
}
