#include <gtest/gtest.h>

#include "Signal.h"

using std::chrono::milliseconds;

namespace {

simulator::Moment after(double seconds) {
    simulator::Moment moment;
    moment.sinceStart = milliseconds(static_cast<int>(seconds * 1000));
    return moment;
}

simulator::Moment atTimeOfDay(int hour) {
    simulator::Moment moment;
    moment.local = std::chrono::hours(24 * 20000 + hour);
    return moment;
}

}  // namespace

TEST(Signal, RampRunsFromOneEndToTheOtherAndBeginsAgain) {
    simulator::RampSignal const ramp(18, 22, 60);
    EXPECT_DOUBLE_EQ(ramp.at(after(0)), 18);
    EXPECT_DOUBLE_EQ(ramp.at(after(15)), 19);
    EXPECT_DOUBLE_EQ(ramp.at(after(45)), 21);
    EXPECT_DOUBLE_EQ(ramp.at(after(60)), 18);
    EXPECT_DOUBLE_EQ(ramp.at(after(615)), 19);
}

TEST(Signal, RampCanFall) {
    EXPECT_DOUBLE_EQ(simulator::RampSignal(10, -10, 4).at(after(1)), 5);
}

TEST(Signal, CurveOfADayPeaksAtItsPeakByTheWallClock) {
    simulator::CurveSignal const curve(8, 6, 86400, 14 * 3600);
    EXPECT_NEAR(curve.at(atTimeOfDay(14)), 14, 1e-9);
    EXPECT_NEAR(curve.at(atTimeOfDay(2)), 2, 1e-9);
    EXPECT_NEAR(curve.at(atTimeOfDay(8)), 8, 1e-9);
    EXPECT_NEAR(curve.at(atTimeOfDay(20)), 8, 1e-9);
}

TEST(Signal, ToggleIsOffFirst) {
    simulator::ToggleSignal const toggle(10);
    EXPECT_EQ(toggle.at(after(0)), 0);
    EXPECT_EQ(toggle.at(after(4.9)), 0);
    EXPECT_EQ(toggle.at(after(5)), 1);
    EXPECT_EQ(toggle.at(after(9.9)), 1);
    EXPECT_EQ(toggle.at(after(10)), 0);
}

TEST(Signal, CounterGrowsInWholeSteps) {
    simulator::CounterSignal const counter(100, 0.5);
    EXPECT_EQ(counter.at(after(0)), 100);
    EXPECT_EQ(counter.at(after(1.9)), 100);
    EXPECT_EQ(counter.at(after(2)), 101);
    EXPECT_EQ(counter.at(after(200)), 200);
}

TEST(Signal, StepsTakeOneValueAfterTheOther) {
    simulator::StepsSignal const steps({1, 2, 5}, 30);
    EXPECT_EQ(steps.at(after(0)), 1);
    EXPECT_EQ(steps.at(after(9.9)), 1);
    EXPECT_EQ(steps.at(after(10.1)), 2);
    EXPECT_EQ(steps.at(after(29.9)), 5);
    EXPECT_EQ(steps.at(after(30.1)), 1);
}
