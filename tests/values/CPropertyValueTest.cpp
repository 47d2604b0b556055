#include <gtest/gtest.h>

#include "UintValue.h"
#include "ValueTags.h"

TEST(CPropertyValue, GivesOneTagNoConstructedOnesAndTheValueThatWasSet) {
    UintValue value(3);
    value.SetValue(260);
    EXPECT_EQ(value.GetValue(), 260U);
    ASSERT_EQ(value.ToApplicationTags().size(), 1U);
    EXPECT_EQ(test::ToHex(value.ToApplicationTags()[0].GetBytes()), "22 01 04");
    EXPECT_TRUE(value.ToApplicationComplexTags().empty());
}

TEST(CPropertyValue, ComparesEveryPairAsEqualUnlessAClassSaysOtherwise) {
    class PlainValue : public CPropertyValue {
    public:
        Tag ToApplicationTag() const override { return Tag(); }
    };
    EXPECT_EQ(test::Compared(PlainValue(), UintValue(3)), 0);
}
