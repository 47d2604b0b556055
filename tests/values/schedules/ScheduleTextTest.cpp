#include <gtest/gtest.h>

#include "Hex.h"
#include "ScheduleText.h"

using test::Hex;

TEST(HexToBytes, ReadsTwoCharactersAtATimeAndOthersThanHexadecimalAsZero) {
    EXPECT_EQ(HexToBytes("0aFF"), Hex("0A FF"));
    EXPECT_EQ(HexToBytes("0af"), Hex("0A 0F"));
    EXPECT_EQ(HexToBytes("zz1g"), Hex("00 01"));
    EXPECT_EQ(HexToBytes("-1"), Hex("FF"));
    EXPECT_EQ(HexToBytes(""), Hex(""));
}

TEST(SplitText, CountsALastPartOnlyIfItIsNotEmpty) {
    using Pieces = std::vector<std::string>;
    EXPECT_EQ(SplitText("a;b", ';'), (Pieces{"a", "b"}));
    EXPECT_EQ(SplitText("a;b;", ';'), (Pieces{"a", "b"}));
    EXPECT_EQ(SplitText(";;a", ';'), (Pieces{"", "", "a"}));
    EXPECT_EQ(SplitText(";", ';'), (Pieces{""}));
    EXPECT_EQ(SplitText("", ';'), Pieces());
}
