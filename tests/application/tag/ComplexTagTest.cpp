#include "ComplexTag.h"

#include <gtest/gtest.h>

#include "Hex.h"
#include "Tag.h"

using test::Hex;
using test::ToHex;

namespace {

// Counts its instances, to show that each is destroyed once.
class CountedTag : public TagBase {
public:
    CountedTag() { ++alive; }
    ~CountedTag() override { --alive; }
    std::vector<char> GetBytes() const override { return Hex("C0 DE"); }

    static int alive;
};
int CountedTag::alive = 0;

}  // namespace

TEST(ComplexTag, WithoutSubTagsIsOnlyOpeningAndClosingTag) {
    EXPECT_EQ(ToHex(ComplexTag(3, true).GetBytes()), "3E 3F");
    EXPECT_EQ(ToHex(ComplexTag().GetBytes()), "0E 0F");
    EXPECT_EQ(ComplexTag(3, true).GetValLenType(), 0);
    EXPECT_EQ(ComplexTag(3, true).size(), 0);
}

TEST(ComplexTag, BracketsAreOfContextClassWhateverTheFlagSays) {
    EXPECT_EQ(ToHex(ComplexTag(3, false).GetBytes()), "3E 3F");
    EXPECT_FALSE(ComplexTag(3, false).GetIsClass());
}

TEST(ComplexTag, NumberAboveSixHasAFurtherOctetOnBothBrackets) {
    EXPECT_EQ(ToHex(ComplexTag(7, true).GetBytes()), "7E 07 7F 07");
}

TEST(ComplexTag, WritesSubTagsInOrderAndInDepth) {
    ComplexTag list(1, true);
    list.AddSubTag(std::make_unique<Tag>(2, true, 1, Hex("55"), 0));
    auto value = std::make_unique<ComplexTag>(4, true);
    value->AddSubTag(std::make_unique<Tag>(4, false, 4, Hex("3F 80 00 00"), 0));
    value->AddSubTag(std::make_unique<ComplexTag>(5, true));
    list.AddSubTag(std::move(value));
    list.AddSubTag(std::make_unique<Tag>(0, false, 0, 0));
    EXPECT_EQ(ToHex(list.GetBytes()), "1E 29 55 4E 44 3F 80 00 00 5E 5F 4F 00 1F");
}

TEST(ComplexTag, ReturnsItsSubTagsByIndexAndKeepsThem) {
    ComplexTag list(1, true);
    list.AddSubTag(std::make_unique<Tag>(2, true, 0, 0));
    list.AddSubTag(std::make_unique<ComplexTag>(3, true));
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list.GetSubTag(0)->GetTagNumber(), 2);
    EXPECT_EQ(list.GetSubTag(1)->GetTagNumber(), 3);
    EXPECT_NE(dynamic_cast<ComplexTag*>(list.GetSubTag(1)), nullptr);
}

TEST(ComplexTag, UsesTheVirtualGetBytesOfItsSubTagsAndDestroysEachOnce) {
    {
        ComplexTag list(1, true);
        auto inner = std::make_unique<ComplexTag>(2, true);
        inner->AddSubTag(std::make_unique<CountedTag>());
        list.AddSubTag(std::make_unique<CountedTag>());
        list.AddSubTag(std::move(inner));
        list.AddSubTag(std::make_unique<CountedTag>());
        EXPECT_EQ(CountedTag::alive, 3);
        EXPECT_EQ(ToHex(list.GetBytes()), "1E C0 DE 2E C0 DE 2F C0 DE 1F");
    }
    EXPECT_EQ(CountedTag::alive, 0);
}
