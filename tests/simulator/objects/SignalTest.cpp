#include <gtest/gtest.h>

#include "Signal.h"

using std::chrono::milliseconds;

namespace {

simulator::Moment After(double seconds) {
    simulator::Moment moment;
    moment.sinceStart = milliseconds(static_cast<int>(seconds * 1000));
    return moment;
}

simulator::Moment AtTimeOfDay(int hour) {
    simulator::Moment moment;
    moment.local = std::chrono::hours(24 * 20000 + hour);
    return moment;
}

}  // namespace

TEST(Signal, RampRunsFromOneEndToTheOtherAndBeginsAgain) {
    simulator::RampSignal const ramp(18, 22, 60);
    EXPECT_DOUBLE_EQ(ramp.At(After(0)), 18);
    EXPECT_DOUBLE_EQ(ramp.At(After(15)), 19);
    EXPECT_DOUBLE_EQ(ramp.At(After(45)), 21);
    EXPECT_DOUBLE_EQ(ramp.At(After(60)), 18);
    EXPECT_DOUBLE_EQ(ramp.At(After(615)), 19);
}

TEST(Signal, RampCanFall) {
    EXPECT_DOUBLE_EQ(simulator::RampSignal(10, -10, 4).At(After(1)), 5);
}

TEST(Signal, CurveOfADayPeaksAtItsPeakByTheWallClock) {
    simulator::CurveSignal const curve(8, 6, 86400, 14 * 3600);
    EXPECT_NEAR(curve.At(AtTimeOfDay(14)), 14, 1e-9);
    EXPECT_NEAR(curve.At(AtTimeOfDay(2)), 2, 1e-9);
    EXPECT_NEAR(curve.At(AtTimeOfDay(8)), 8, 1e-9);
    EXPECT_NEAR(curve.At(AtTimeOfDay(20)), 8, 1e-9);
}

TEST(Signal, ToggleIsOffFirst) {
    simulator::ToggleSignal const toggle(10);
    EXPECT_EQ(toggle.At(After(0)), 0);
    EXPECT_EQ(toggle.At(After(4.9)), 0);
    EXPECT_EQ(toggle.At(After(5)), 1);
    EXPECT_EQ(toggle.At(After(9.9)), 1);
    EXPECT_EQ(toggle.At(After(10)), 0);
}

TEST(Signal, CounterGrowsInWholeSteps) {
    simulator::CounterSignal const counter(100, 0.5);
    EXPECT_EQ(counter.At(After(0)), 100);
    EXPECT_EQ(counter.At(After(1.9)), 100);
    EXPECT_EQ(counter.At(After(2)), 101);
    EXPECT_EQ(counter.At(After(200)), 200);
}

TEST(Signal, StepsTakeOneValueAfterTheOther) {
    simulator::StepsSignal const steps({1, 2, 5}, 30);
    EXPECT_EQ(steps.At(After(0)), 1);
    EXPECT_EQ(steps.At(After(9.9)), 1);
    EXPECT_EQ(steps.At(After(10.1)), 2);
    EXPECT_EQ(steps.At(After(29.9)), 5);
    EXPECT_EQ(steps.At(After(30.1)), 1);
}
