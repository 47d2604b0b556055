#include "CycleTimes.h"

#include <gtest/gtest.h>

#include "FakeEnvironment.h"

using namespace test;
using namespace workbench;

namespace {

constexpr long long Millisecond = 10000;

// Two blocks of a task of 100 ms and one of a task of 1 s, by a clock that the test sets.
class Cycles : public testing::Test {
protected:
    Cycles() {
        dorvel::SetEnvironment(&world);
        for (char const* const task : {"", "fast", "slow"}) {
            blocks.emplace_back();
            blocks.back().task = task;
        }
    }
    ~Cycles() override { dorvel::SetEnvironment(nullptr); }

    CycleFigures Run(CycleTimes& times, std::size_t block, long long milliseconds) {
        times.Begin(blocks[block]);
        world.time += milliseconds * Millisecond;
        return times.End(blocks[block]);
    }

    FakeEnvironment world;
    std::vector<TaskConfig> tasks{{"fast", 100}, {"slow", 1000}};
    std::deque<BlockConfig> blocks;
};

TEST_F(Cycles, HaveALastAMedianAndAMaximumTime) {
    CycleTimes times(tasks, blocks);
    EXPECT_EQ(times.FiguresOf(blocks[2]).count, 0u);
    for (long long const duration : {5, 1, 900, 3, 4}) {
        Run(times, 2, duration);
    }
    CycleFigures const figures = times.FiguresOf(blocks[2]);
    EXPECT_EQ(figures.count, 5u);
    EXPECT_EQ(figures.last, 4 * Millisecond);
    EXPECT_EQ(figures.median, 4 * Millisecond);
    EXPECT_EQ(figures.maximum, 900 * Millisecond);
    EXPECT_EQ(figures.overruns, 0u);
}

TEST_F(Cycles, ACycleThatIsLongerThanThePeriodIsAnOverrun) {
    CycleTimes times(tasks, blocks);
    EXPECT_EQ(Run(times, 2, 1000).overruns, 0u);
    EXPECT_EQ(Run(times, 2, 1001).overruns, 1u);
    EXPECT_EQ(Run(times, 2, 5000).overruns, 2u);
    EXPECT_EQ(Run(times, 2, 1).overruns, 2u);
}

TEST_F(Cycles, BlocksOfATaskOverrunItsPeriodTogetherAndOnceACycle) {
    CycleTimes times(tasks, blocks);
    EXPECT_EQ(Run(times, 0, 60).overruns, 0u);
    EXPECT_EQ(Run(times, 1, 60).overruns, 1u);
    EXPECT_EQ(Run(times, 0, 160).overruns, 2u);
    EXPECT_EQ(Run(times, 1, 160).overruns, 2u);
    EXPECT_EQ(Run(times, 0, 10).overruns, 2u);
    EXPECT_EQ(Run(times, 2, 10).overruns, 0u) << "another task";
}

}  // namespace
