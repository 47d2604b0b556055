#include "Sparkline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace workbench;

namespace {

Sample Good(long long time, double value) {
    return {time, value, QualityKind::Good};
}

TEST(Sparkline, HasAHeightForEachPartOfTheTime) {
    std::vector<Sample> samples;
    for (int i = 0; i <= 8; ++i) {
        samples.push_back(Good(i * 10, i));
    }
    EXPECT_EQ(Sparkline(samples, 0, 80, 8), "▂▃▄▅▆▇██");
    EXPECT_EQ(Sparkline(samples, 0, 80, 2), "▅█");
}

TEST(Sparkline, AValueHoldsUntilTheNextOne) {
    EXPECT_EQ(Sparkline({Good(0, 1), Good(50, 3), Good(100, 3)}, 0, 100, 4), "▁███");
}

TEST(Sparkline, AValueThatNeverChangesIsInTheMiddle) {
    EXPECT_EQ(Sparkline({Good(0, 5), Good(100, 5)}, 0, 100, 3), "▅▅▅");
}

TEST(Sparkline, WithoutAValueAPartIsBlank) {
    double const none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Sparkline({Good(50, 1), Good(70, none), {90, 7, QualityKind::Bad}}, 0, 100, 10), "    ▅▅    ");
    EXPECT_EQ(Sparkline({Good(0, none)}, 0, 100, 10), "");
    EXPECT_EQ(Sparkline({}, 0, 100, 10), "");
    EXPECT_EQ(Sparkline({Good(0, 1)}, 100, 100, 10), "");
}

TEST(Sparkline, WithstandsTheGreatestNumbers) {
    double const most = std::numeric_limits<double>::max();
    EXPECT_EQ(Sparkline({Good(0, -most), Good(50, most), Good(60, std::numeric_limits<double>::infinity())},
                        0, 100, 4),
              "▁█  ");
}

}  // namespace
