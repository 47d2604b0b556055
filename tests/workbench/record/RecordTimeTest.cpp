#include "RecordTime.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <time.h>

namespace {

using workbench::ReadDuration;
using workbench::ReadSize;
using workbench::ReadTime;

constexpr long long Now = 1710502496789;  // 15 March 2024 11:34:56.789 UTC

class InNewYork : public testing::Test {
protected:
    InNewYork() {
        setenv("TZ", "EST5EDT,M3.2.0,M11.1.0", 1);
        tzset();
    }
    ~InNewYork() override {
        unsetenv("TZ");
        tzset();
    }
};

TEST_F(InNewYork, TimesAreLocalWithoutAnOffset) {
    EXPECT_EQ(ReadTime("2024-03-15T07:34:56.789", Now), Now);
    EXPECT_EQ(ReadTime("2024-03-15 07:34:56", Now), Now - 789);
    EXPECT_EQ(ReadTime("2024-01-15T07:00", 0), 1705320000000);
    EXPECT_EQ(ReadTime("2024-01-15", 0), 1705294800000);
    EXPECT_EQ(workbench::LocalDiffAt(Now), -4 * 3600000);
    EXPECT_EQ(workbench::LocalDiffAt(1705320000000), -5 * 3600000);
}

TEST_F(InNewYork, AnOffsetCounts) {
    EXPECT_EQ(ReadTime("2024-03-15T11:34:56.789Z", 0), Now);
    EXPECT_EQ(ReadTime("2024-03-15T12:34:56.789+01:00", 0), Now);
    EXPECT_EQ(ReadTime("2024-03-15T06:04:56.789-0530", 0), Now);
}

TEST(RecordTime, TimesMayBeRelative) {
    EXPECT_EQ(ReadTime("now", Now), Now);
    EXPECT_EQ(ReadTime("-24h", Now), Now - 86400000);
    EXPECT_EQ(ReadTime("-1.5m", Now), Now - 90000);
}

TEST(RecordTime, OtherTextsAreNotTimes) {
    for (char const* const text :
         {"", "x", "2024", "2024-13-01", "2024-02-30", "2024-00-10", "2024-03-15T", "2024-03-15T25:00",
          "2024-03-15T12", "2024-03-15T12:60", "2024-03-15T12:00:00+", "2024-03-15T12:00:00Zx", "-", "-5",
          "-5y", "24h", "2024-03-15x", "+2024-3-15", "2024-03-15T12:00:00+99:00"}) {
        EXPECT_EQ(ReadTime(text, Now), std::nullopt) << text;
    }
}

TEST(RecordTime, DurationsAndSizesHaveUnits) {
    EXPECT_EQ(ReadDuration("400d"), 400LL * 86400000);
    EXPECT_EQ(ReadDuration("2w"), 14LL * 86400000);
    EXPECT_EQ(ReadDuration("90s"), 90000);
    EXPECT_EQ(ReadSize("2G"), 2LL << 30);
    EXPECT_EQ(ReadSize("1.5M"), 3LL << 19);
    for (char const* const text : {"", "5", "d", "-5d", "5y", "1e3d", "5 d", "nan", "infd", "99999999999w"}) {
        EXPECT_EQ(ReadDuration(text), std::nullopt) << text;
    }
    EXPECT_EQ(ReadSize("5m"), std::nullopt);
}

}  // namespace
