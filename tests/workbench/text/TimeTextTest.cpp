#include "TimeText.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

using namespace workbench;

namespace {

constexpr long long Second = 10000000;
constexpr long long Hour = 3600 * Second;
constexpr long long Unix = 116444736000000000LL;
// 15 March 2024 11:34:56.789 UTC.
constexpr long long March = Unix + 1710502496LL * Second + 7890000;

TEST(TimeText, IsoTimeIsLocalTimeWithItsOffset) {
    EXPECT_EQ(IsoTime(March, 0), "2024-03-15T11:34:56.789+00:00");
    EXPECT_EQ(IsoTime(March, Hour), "2024-03-15T12:34:56.789+01:00");
    EXPECT_EQ(IsoTime(March, -(9 * Hour + Hour / 2)), "2024-03-15T02:04:56.789-09:30");
}

TEST(TimeText, DatesFollowTheGregorianCalendar) {
    EXPECT_EQ(IsoTime(0, 0), "1601-01-01T00:00:00.000+00:00");
    EXPECT_EQ(IsoValue(Unix, 0), "1970-01-01T00:00:00");
    EXPECT_EQ(IsoValue(Unix + 951782400LL * Second, 0), "2000-02-29T00:00:00");
    EXPECT_EQ(IsoValue(Unix + 951868800LL * Second, 0), "2000-03-01T00:00:00");
    EXPECT_EQ(IsoValue(Unix + 4107542399LL * Second, 0), "2100-02-28T23:59:59");
    EXPECT_EQ(IsoValue(Unix + 4107542400LL * Second, 0), "2100-03-01T00:00:00");
    EXPECT_EQ(IsoValue(Unix - Second, 0), "1969-12-31T23:59:59");
    EXPECT_EQ(IsoValue(-Second, 0), "1600-12-31T23:59:59");
}

TEST(TimeText, ValuesHaveMillisecondsOnlyWhenThereAreSome) {
    EXPECT_EQ(IsoValue(March, 0), "2024-03-15T11:34:56.789");
    EXPECT_EQ(IsoValue(March - 7890000, Hour), "2024-03-15T12:34:56");
    EXPECT_EQ(ClockTime(March, Hour), "12:34:56");
}

TEST(TimeText, AnyNumberIsATime) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 10000; ++i) {
        long long const time = static_cast<long long>(random());
        std::string const text = IsoTime(time, Hour);
        EXPECT_NE(text.find('T'), std::string::npos);
        EXPECT_EQ(ClockTime(time, Hour), text.substr(text.find('T') + 1, 8));
    }
    EXPECT_EQ(IsoTime(std::numeric_limits<long long>::max(), 0), "30828-09-14T02:48:05.477+00:00");
    EXPECT_FALSE(IsoTime(std::numeric_limits<long long>::min(), -Hour).empty());
}

TEST(TimeText, AgesHaveASuitableUnit) {
    auto const age = [](double seconds) {
        return AgeText(March, March + static_cast<long long>(seconds * 1e7));
    };
    EXPECT_EQ(age(0), "0.0 s");
    EXPECT_EQ(age(0.44), "0.4 s");
    EXPECT_EQ(age(9.9), "9.9 s");
    EXPECT_EQ(age(9.96), "10 s");
    EXPECT_EQ(age(119), "119 s");
    EXPECT_EQ(age(120), "2 min");
    EXPECT_EQ(age(7199), "120 min");
    EXPECT_EQ(age(7200), "2 h");
    EXPECT_EQ(age(3 * 86400), "3 d");
    EXPECT_EQ(age(-5), "0.0 s");
    EXPECT_EQ(AgeText(std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max()),
              "21350398 d");
}

}  // namespace
