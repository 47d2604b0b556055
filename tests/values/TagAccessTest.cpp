#include "TagAccess.h"

#include <gtest/gtest.h>

#include "ValueTags.h"

using test::Hex;
using test::Wrap;

TEST(TagAccess, ReturnsTheSubTagOfEachIndex) {
    auto const wrapper = Wrap(Hex("21 07 1E 1F"));
    EXPECT_EQ(PrimitiveSubTag(*wrapper, 0).data, Hex("07"));
    EXPECT_EQ(SubTag(*wrapper, 1).GetTagNumber(), 1);
}

TEST(TagAccess, IndexBeforeTheFirstOrAfterTheLastIsAParseError) {
    auto const wrapper = Wrap(Hex("21 07"));
    EXPECT_THROW(SubTag(*wrapper, -1), ParseException);
    EXPECT_THROW(SubTag(*wrapper, 1), ParseException);
    EXPECT_THROW(PrimitiveSubTag(*wrapper, -1), ParseException);
}

TEST(TagAccess, FirstOctetIsUnsignedAndMustExist) {
    EXPECT_EQ(FirstOctet(Tag::FromOctets(8, false, Hex("FE 01"))), 0xFE);
    EXPECT_THROW(FirstOctet(Tag::FromOctets(8, false, {})), ParseException);
}
