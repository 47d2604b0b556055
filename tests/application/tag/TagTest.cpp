#include "Tag.h"

#include <gtest/gtest.h>

#include "Hex.h"

using test::Hex;
using test::Octets;
using test::ToHex;
using test::operator+;

TEST(Tag, IsAllZeroAtFirst) {
    Tag const tag;
    EXPECT_EQ(tag.GetTagNumber(), 0);
    EXPECT_FALSE(tag.GetIsClass());
    EXPECT_EQ(tag.GetValLenType(), 0);
    EXPECT_EQ(tag.GetAdditionalLength(), 0);
    EXPECT_EQ(ToHex(tag.GetBytes()), "00");
}

TEST(Tag, ContextNumberAboveSixHasAFurtherOctet) {
    EXPECT_EQ(ToHex(Tag(7, true, 1, Hex("05"), 0).GetBytes()), "79 07 05");
    EXPECT_EQ(ToHex(Tag(6, true, 1, Hex("05"), 0).GetBytes()), "69 05");
    EXPECT_EQ(ToHex(Tag(15, true, 0, 0).GetBytes()), "F8 0F");
    EXPECT_EQ(ToHex(Tag(static_cast<char>(0xC3), true, 0, 0).GetBytes()), "38 C3");
}

TEST(Tag, ApplicationNumberNeverHasAFurtherOctet) {
    EXPECT_EQ(ToHex(Tag(7, false, 1, Hex("05"), 0).GetBytes()), "71 05");
    EXPECT_EQ(ToHex(Tag(static_cast<char>(0xC3), false, 0, 0).GetBytes()), "30");
}

TEST(Tag, DataOf300OctetsHasTheLowOctetOfItsLengthAndIsWrittenWhole) {
    Octets data(300);
    for (std::size_t i = 0; i < data.size(); ++i) {
        data[i] = static_cast<char>(i % 251);
    }
    EXPECT_EQ(ToHex(Tag(6, false, 5, data, 300).GetBytes()), ToHex(Hex("65 2C") + data));
}

TEST(Tag, ExtendedLengthIsOneOctetAlways) {
    EXPECT_EQ(ToHex(Tag(8, true, 5, Hex("AA"), 1).GetBytes()), "8D 08 01 AA");
    EXPECT_EQ(ToHex(Tag(2, false, 5, 254).GetBytes()), "25 FE");
    EXPECT_EQ(ToHex(Tag(2, false, 5, 255).GetBytes()), "25 FF");
    EXPECT_EQ(ToHex(Tag(2, false, 5, -1).GetBytes()), "25 FF");
}

TEST(Tag, LengthTypeIsMaskedButComparedWhole) {
    EXPECT_EQ(ToHex(Tag(2, false, 13, 9).GetBytes()), "25");
}

TEST(Tag, FromOctetsFollowsTheLengthRule) {
    EXPECT_EQ(ToHex(Tag::FromOctets(2, false, {}).GetBytes()), "20");
    EXPECT_EQ(ToHex(Tag::FromOctets(2, false, Hex("01 02 03 04")).GetBytes()), "24 01 02 03 04");
    EXPECT_EQ(ToHex(Tag::FromOctets(2, true, Hex("01 02 03 04 05")).GetBytes()), "2D 05 01 02 03 04 05");
    EXPECT_EQ(Tag::FromOctets(6, false, Octets(300)).GetAdditionalLength(), 300);
}

TEST(Tag, AccessorsReturnWhatWasSet) {
    Tag tag;
    tag.SetTagNumber(static_cast<char>(200));
    tag.SetIsClass(true);
    tag.SetValLenType(9);
    tag.SetAdditionalLength(100000);
    tag.data = Hex("01");
    Tag const copy = tag;
    EXPECT_EQ(static_cast<unsigned char>(copy.GetTagNumber()), 200);
    EXPECT_TRUE(copy.GetIsClass());
    EXPECT_EQ(copy.GetValLenType(), 9);
    EXPECT_EQ(copy.GetAdditionalLength(), 100000);
    EXPECT_EQ(ToHex(copy.data), "01");
}
