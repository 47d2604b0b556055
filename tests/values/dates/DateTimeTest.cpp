#include <gtest/gtest.h>

#include "DateTime.h"
#include "ValueTags.h"

using test::Text;

TEST(DateTime, IsTheSumOfItsPartsAndIsMadeOfTheWholeFileTime) {
    constexpr unsigned long long hoursTo15March2024 = 154571 * 24;  // from 1 January 1601
    constexpr unsigned long long fileTime = (hoursTo15March2024 + 1) * 36000000000ULL;
    EXPECT_EQ(DateTime(Date(124, 3, 15, 255), Time(1, 0, 0, 0)).ToFileTime(), fileTime);
    EXPECT_EQ(Text(DateTime(fileTime).date), Text(Date(fileTime)));
    EXPECT_EQ(Text(DateTime(fileTime).time), Text(Time(fileTime)));
    EXPECT_EQ(DateTime(fileTime).time.hour, static_cast<std::uint8_t>(hoursTo15March2024 + 1));
}
