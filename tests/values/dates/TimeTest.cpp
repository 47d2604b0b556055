#include <gtest/gtest.h>

#include "Time.h"
#include "ValueTags.h"

using test::Text;

namespace {

constexpr std::uint8_t Any = 255;

}  // namespace

TEST(Time, OfAllUnspecifiedGivesZero) {
    EXPECT_EQ(Time(Any, Any, Any, Any).ToFileTime(), 0U);
}

TEST(Time, CountsAnUnspecifiedFieldAsZero) {
    EXPECT_EQ(Time(Any, 1, 2, 3).ToFileTime(), 620300000U);
    EXPECT_EQ(Time(1, Any, Any, Any).ToFileTime(), 36000000000ULL);
    EXPECT_EQ(Time(Any, Any, 1, Any).ToFileTime(), 10000000U);
    EXPECT_EQ(Time(Any, Any, Any, 1).ToFileTime(), 100000U);
}

TEST(Time, CountsIn100Nanoseconds) {
    EXPECT_EQ(Time(1, 2, 3, 4).ToFileTime(), 36000000000ULL + 1200000000ULL + 30000000ULL + 400000ULL);
    EXPECT_EQ(Time().ToFileTime(), 0U);
}

TEST(Time, OfAFileTimeIsItsInverseAndCutsTheHour) {
    EXPECT_EQ(Text(Time(Time(23, 59, 58, 99).ToFileTime())), "23 59 58 99");
    EXPECT_EQ(Text(Time(300 * 36000000000ULL)), "44 0 0 0");
}
