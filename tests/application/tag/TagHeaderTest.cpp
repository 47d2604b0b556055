#include "TagHeader.h"

#include <gtest/gtest.h>

TEST(TagHeader, SplitsEveryOctet) {
    for (int octet = 0; octet < 256; ++octet) {
        TagHeader const header(static_cast<char>(octet));
        EXPECT_EQ(header.GetTagNumber(), octet / 16);
        EXPECT_EQ(header.GetIsClass(), octet / 8 % 2 == 1);
        EXPECT_EQ(header.GetValueLengthType(), octet % 8);
        EXPECT_EQ(header.GetIsComplexOpenTag(), octet % 8 == 6);
        EXPECT_EQ(header.GetIsComplexCloseTag(), octet % 8 == 7);
    }
}

TEST(TagHeader, HoldsZeroAtFirst) {
    TagHeader const header;
    EXPECT_EQ(header.GetTagNumber(), 0);
    EXPECT_FALSE(header.GetIsClass());
    EXPECT_EQ(header.GetValueLengthType(), 0);
}

TEST(TagHeader, ApplicationTagsCountAsOpeningTagsToo) {
    EXPECT_TRUE(TagHeader(0x36).GetIsComplexOpenTag());
    EXPECT_TRUE(TagHeader(0x3E).GetIsComplexOpenTag());
}

TEST(TagHeader, SetIsClassTouchesBitThreeOnly) {
    TagHeader header(static_cast<char>(0xF7));
    header.SetIsClass(true);
    EXPECT_TRUE(header.GetIsClass());
    EXPECT_EQ(header.GetTagNumber(), 15);
    EXPECT_EQ(header.GetValueLengthType(), 7);
    header.SetIsClass(false);
    EXPECT_FALSE(header.GetIsClass());
    EXPECT_EQ(header.GetTagNumber(), 15);
    EXPECT_EQ(header.GetValueLengthType(), 7);
}

TEST(TagHeader, SetTagNumberIsLimitedToFifteenAndKeepsTheLowHalf) {
    TagHeader header(0x0D);
    header.SetTagNumber(9);
    EXPECT_EQ(header.GetTagNumber(), 9);
    header.SetTagNumber(16);
    EXPECT_EQ(header.GetTagNumber(), 15);
    header.SetTagNumber(static_cast<char>(200));
    EXPECT_EQ(header.GetTagNumber(), 15);
    EXPECT_TRUE(header.GetIsClass());
    EXPECT_EQ(header.GetValueLengthType(), 5);
}

TEST(TagHeader, SetValueLengthTypeLosesNumberAndClassAndKeepsOldBits) {
    TagHeader header(static_cast<char>(0xF9));
    header.SetValueLengthType(4);
    EXPECT_EQ(header.GetTagNumber(), 0);
    EXPECT_FALSE(header.GetIsClass());
    EXPECT_EQ(header.GetValueLengthType(), 5);

    TagHeader limited(0x10);
    limited.SetValueLengthType(8);
    EXPECT_EQ(limited.GetValueLengthType(), 5);

    TagHeader unsignedLimit;
    unsignedLimit.SetValueLengthType(static_cast<char>(200));
    EXPECT_EQ(unsignedLimit.GetValueLengthType(), 5);
}
