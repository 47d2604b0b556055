// A block is good again in the first cycle that begins after its device answers again, for every round trip
// time and task period.

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "FaultTable.h"

using namespace test;

namespace {

constexpr Path AllPaths[] = {Path::Plain, Path::Segmented, Path::Routed, Path::Write};
constexpr long long RoundTrips[] = {1, 20, 100, 330, 600};
constexpr long long Periods[] = {100, 1000, 10'000};
constexpr int WatchedCycles = 10;

using Setting = std::tuple<Path, long long, long long>;

std::string NameOfSetting(testing::TestParamInfo<Setting> const& info) {
    auto const [path, roundTrip, period] = info.param;
    constexpr char const* names[] = {"Read", "SegmentedRead", "RoutedRead", "Write"};
    return std::string(names[static_cast<std::size_t>(path)]) + "_RoundTrip" + std::to_string(roundTrip) +
           "_Period" + std::to_string(period);
}

// A plant whose cycles begin at multiples of the task's period, as in the host: a cycle that lasts longer
// skips starts.
class Recovery : public testing::TestWithParam<Setting> {
protected:
    Recovery() : plant(std::get<Path>(GetParam())), period(std::get<2>(GetParam())) {
        plant.SetRoundTrip(std::get<1>(GetParam()));
        EXPECT_EQ(Run(), Report::Good);
        EXPECT_EQ(Run(), Report::Good);
    }

    Report Run() { return plant.Run(NextStart() - Now()).report; }
    long long Now() { return plant.World().Elapsed(); }
    long long NextStart() { return (Now() / period + 1) * period; }

    void ExpectGoodCycles() {
        for (int cycle = 0; cycle < WatchedCycles; ++cycle) {
            EXPECT_EQ(Run(), Report::Good) << "cycle " << cycle;
        }
    }

    void Disturb(Disturbance disturbance, std::optional<std::uint32_t> times) {
        simulator::Fault fault = FaultOf(disturbance, std::get<Path>(GetParam()));
        fault.times = times;
        plant.Faults().Add(fault);
    }

    Plant plant;
    long long const period;
};

TEST_P(Recovery, FromADeviceThatPausesFor4SecondsDuringAPoll) {
    constexpr long long Length = 4000;
    constexpr int RequestOfTheCycle = 2;
    int requests = 0;
    long long resumed = 0;
    plant.World().Watch([&] {
        if (++requests == RequestOfTheCycle) {
            plant.Hold(Length);
            resumed = Now() + Length;
        }
    });
    while (resumed == 0 || NextStart() < resumed) {
        Run();
    }
    plant.World().Watch({});
    ExpectGoodCycles();
}

TEST_P(Recovery, FromOneAnswerThatIsLateByOneAndAHalfTimeOuts) {
    Disturb(Disturbance::LongDelay, 1);
    EXPECT_EQ(Run(), Report::Good) << "it costs an attempt";
    ExpectGoodCycles();
}

TEST_P(Recovery, FromDatagramsThatAreDoubledForAWhile) {
    Disturb(Disturbance::Duplicate, {});
    for (int cycle = 0; cycle < 3; ++cycle) {
        Run();
    }
    plant.Faults().Clear();
    ExpectGoodCycles();
}

TEST_P(Recovery, FromOneDatagramThatIsDoubled) {
    Disturb(Disturbance::Duplicate, 1);
    Run();
    ExpectGoodCycles();
}

INSTANTIATE_TEST_SUITE_P(All, Recovery,
                         testing::Combine(testing::ValuesIn(AllPaths), testing::ValuesIn(RoundTrips),
                                          testing::ValuesIn(Periods)),
                         NameOfSetting);

}  // namespace
