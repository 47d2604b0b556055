#include "HexText.h"

#include <gtest/gtest.h>

using namespace tools;

namespace {

TEST(HexText, HasTwoDigitsForEachOctet) {
    EXPECT_EQ(HexText(std::string_view("\x00\x0A\xFF", 3), HexDigits::Lower), "000aff");
    EXPECT_EQ(HexText(std::string_view("\x00\x0A\xFF", 3), HexDigits::Upper), "000AFF");
    EXPECT_EQ(HexText(std::vector<char>{'\x0A', '\xFF'}, HexDigits::Upper), "0AFF");
    EXPECT_EQ(HexText("", HexDigits::Upper), "");
}

}  // namespace
