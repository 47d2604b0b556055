#include <gtest/gtest.h>

#include <typeinfo>

#include "BinaryValue.h"
#include "EnumValue.h"
#include "ValueTags.h"

using test::Compared;
using test::Written;

namespace {

unsigned ReadEnum(std::string_view hex) {
    return test::Read<EnumValue, EnumValueParser>(hex).GetValue();
}

}  // namespace

TEST(EnumValue, OfFiveWritesFourOctets) {
    EXPECT_EQ(Written(EnumValue(5)), "94 00 00 00 05");
}

TEST(EnumValue, OfAnyNumberWritesFourOctets) {
    EXPECT_EQ(Written(EnumValue(0)), "94 00 00 00 00");
    EXPECT_EQ(Written(EnumValue(0xFEDCBA98)), "94 FE DC BA 98");
}

TEST(EnumValueParser, ReadsEmptyDataAsZero) {
    EXPECT_EQ(ReadEnum("90"), 0U);
}

TEST(EnumValueParser, ReadsABitStringAsANumberWithItsUnusedBits) {
    EXPECT_EQ(ReadEnum("82 04 F0"), 1264U);
}

TEST(EnumValueParser, KeepsTheLow32BitsOfUpToEightOctets) {
    EXPECT_EQ(ReadEnum("25 05 01 00 00 00 02"), 2U);
    EXPECT_EQ(ReadEnum("95 08 01 02 03 04 FF FE FD FC"), 0xFFFEFDFCU);
}

TEST(EnumValue, ComparesByTheDifference) {
    EXPECT_EQ(Compared(EnumValue(3), EnumValue(5)), -2);
    EXPECT_EQ(Compared(EnumValue(5), EnumValue(3)), 2);
    EXPECT_EQ(Compared(EnumValue(0), EnumValue(0xFFFFFFFF)), 1);
    EXPECT_THROW(Compared(EnumValue(1), BinaryValue(BACnetBinaryPV::Active)), std::bad_cast);
}
