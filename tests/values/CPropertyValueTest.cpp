#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <utility>

#include "AnswerStore.h"
#include "BinaryValue.h"
#include "BitStringValue.h"
#include "BooleanValue.h"
#include "CharacterStringValue.h"
#include "DateTimeValue.h"
#include "DateValue.h"
#include "DoubleValue.h"
#include "EnumValue.h"
#include "ExceptionScheduleValue.h"
#include "Heap.h"
#include "IntValue.h"
#include "OctetStringValue.h"
#include "RealValue.h"
#include "TimeValue.h"
#include "UintValue.h"
#include "ValueTags.h"
#include "WeeklyScheduleValue.h"

TEST(CPropertyValue, HasTheMemoryOfAnEarlierValueWhileAStoreLives) {
    AnswerStore const store;
    auto const allocations = [] {
        long long const before = test::HeapTotalsSoFar().allocations;
        std::make_unique<CharacterStringValue>("short", EncodingTypeEnum::Utf8).reset();
        return test::HeapTotalsSoFar().allocations - before;
    };
    EXPECT_EQ(allocations(), 1);
    EXPECT_EQ(allocations(), 0);
}

TEST(CPropertyValue, ReturnsOneTagNoConstructedOnesAndTheValueThatWasSet) {
    UintValue value(3);
    value.SetValue(260);
    EXPECT_EQ(value.GetValue(), 260U);
    ASSERT_EQ(value.ToApplicationTags().size(), 1U);
    EXPECT_EQ(test::ToHex(value.ToApplicationTags()[0].GetBytes()), "22 01 04");
    EXPECT_TRUE(value.ToApplicationComplexTags().empty());
}

namespace {

template <class... Values>
constexpr bool GiveCopies = (!std::is_reference_v<decltype(std::declval<Values>().GetValue())> && ...);

}  // namespace

TEST(CPropertyValue, ReturnsACopySoThatATemporarysValueOutlivesIt) {
    static_assert(GiveCopies<BinaryValue, BitStringValue, BooleanValue, CharacterStringValue, DateTimeValue,
                             DateValue, DoubleValue, EnumValue, ExceptionScheduleValue, IntValue,
                             OctetStringValue, RealValue, TimeValue, UintValue, WeeklyScheduleValue>);
    test::Octets copy;
    for (char const octet : OctetStringValue(test::Octets(100, '\x5A')).GetValue()) {
        copy.push_back(octet);
    }
    EXPECT_EQ(copy, test::Octets(100, '\x5A'));
}

TEST(CPropertyValue, ComparesEveryPairAsEqualByDefault) {
    class PlainValue : public CPropertyValue {
    public:
        Tag ToApplicationTag() const override { return Tag(); }
    };
    EXPECT_EQ(test::Compared(PlainValue(), UintValue(3)), 0);
}
