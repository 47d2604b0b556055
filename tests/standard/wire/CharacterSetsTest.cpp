#include "CharacterSets.h"

#include <gtest/gtest.h>

#include <random>

#include "CutOff.h"
#include "Printable.h"

using standard::TextOfCharacterString;
using test::Hex;

TEST(CharacterSets, Utf8IsKept) {
    EXPECT_EQ(TextOfCharacterString(Hex("00")), "");
    EXPECT_EQ(TextOfCharacterString(Hex("00 5A 75 C3 BC")), "Zu\xC3\xBC");
    EXPECT_EQ(TextOfCharacterString(Hex("00 F0 9F 98 80")), "\xF0\x9F\x98\x80");
}

TEST(CharacterSets, OctetsThatAreNotUtf8AreReplaced) {
    EXPECT_EQ(TextOfCharacterString(Hex("00 41 FC 42")), "A\xEF\xBF\xBD\x42");
    EXPECT_EQ(TextOfCharacterString(Hex("00 C3")), "\xEF\xBF\xBD");
}

TEST(CharacterSets, Iso8859IsOneOctetACharacter) {
    EXPECT_EQ(TextOfCharacterString(Hex("05 4D FC B0 FF")), "M\xC3\xBC\xC2\xB0\xC3\xBF");
}

TEST(CharacterSets, Ucs2HasTwoOctets) {
    EXPECT_EQ(TextOfCharacterString(Hex("04 00 41 00 FC 20 AC")), "A\xC3\xBC\xE2\x82\xAC");
    EXPECT_EQ(TextOfCharacterString(Hex("04 D8 3D DE 00")), "\xF0\x9F\x98\x80");
}

TEST(CharacterSets, HalfACharacterOfUcs2IsReplaced) {
    EXPECT_EQ(TextOfCharacterString(Hex("04 00 41 00")), "A\xEF\xBF\xBD");
    EXPECT_EQ(TextOfCharacterString(Hex("04 D8 3D")), "\xEF\xBF\xBD");
    EXPECT_EQ(TextOfCharacterString(Hex("04 D8 3D 00 41")), "\xEF\xBF\xBD\x41");
    EXPECT_EQ(TextOfCharacterString(Hex("04 DE 00")), "\xEF\xBF\xBD");
}

TEST(CharacterSets, Ucs4HasFourOctets) {
    EXPECT_EQ(TextOfCharacterString(Hex("03 00 00 00 41 00 01 F6 00")), "A\xF0\x9F\x98\x80");
    EXPECT_EQ(TextOfCharacterString(Hex("03 00 11 00 00")), "\xEF\xBF\xBD");
    EXPECT_EQ(TextOfCharacterString(Hex("03 00 00 D8 00")), "\xEF\xBF\xBD");
    EXPECT_EQ(TextOfCharacterString(Hex("03 00 00 00")), "\xEF\xBF\xBD");
}

TEST(CharacterSets, DbcsIsATextOnlyWhereItIsAscii) {
    EXPECT_EQ(TextOfCharacterString(Hex("01 03 A4 41 42")), "AB");
    EXPECT_EQ(TextOfCharacterString(Hex("01 03 A4")), "");
    EXPECT_EQ(TextOfCharacterString(Hex("01 03 A4 82 A0")), std::nullopt);
    EXPECT_EQ(TextOfCharacterString(Hex("01 03")), std::nullopt);
}

TEST(CharacterSets, OtherSetsAreNotTexts) {
    EXPECT_EQ(TextOfCharacterString({}), std::nullopt);
    EXPECT_EQ(TextOfCharacterString(Hex("02 30 21")), std::nullopt);
    EXPECT_EQ(TextOfCharacterString(Hex("06 41")), std::nullopt);
    EXPECT_EQ(TextOfCharacterString(Hex("FF 41")), std::nullopt);
}

TEST(CharacterSets, EveryTextIsValidUtf8AndPrintable) {
    std::mt19937 random(29);
    for (unsigned i = 0; i < 30000; ++i) {
        test::Octets content =
            test::RandomOctets(random, "00 C3 BC 1B 5B 32 4A ED A0 80 F4 90 80 80 E2 80 AE", 24);
        if (!content.empty()) {
            content[0] = static_cast<char>(i % 7);
        }
        if (auto const text = TextOfCharacterString(content)) {
            EXPECT_EQ(tools::ValidUtf8(*text), *text) << test::ToHex(content);
            std::string const shown = tools::Printable(*text);
            EXPECT_EQ(tools::Printable(shown), shown) << test::ToHex(content);
        }
    }
}

TEST(CharacterSets, ALongTextIsShownCut) {
    test::Octets content(10001, 'x');
    content[0] = 0;
    auto const text = TextOfCharacterString(content);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->size(), 10000u);
    EXPECT_EQ(tools::Printable(*text, 60).size(), 63u);
}
