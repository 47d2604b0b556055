// 1,000 blocks in one process, created by a script and run by the runtime's tasks.

#include <algorithm>
#include <chrono>

#include "LimitFixture.h"
#include "Plant.h"

using namespace test;
using namespace std::chrono_literals;

namespace {

constexpr int Many = 1000;
constexpr int Tasks = 10;
constexpr int RoutedPorts = 20;
constexpr auto Patience = 60s;  // only a failing test waits that long

// Adds this number of blocks, with further fields as Lua text.
void AddBlocks(Plant& plant, int count, std::string const& fields = "") {
    for (int number = 0; number < count; ++number) {
        plant.Add("CountRepeat = 1, " + fields);
    }
}

int Answered(Plant const& plant) {
    auto const& ids = plant.Ids();
    return static_cast<int>(
        std::count_if(ids.begin(), ids.end(), [&plant](long long id) { return plant.NumberOf(id) == 42; }));
}

std::vector<LineAnswer> AnswerReads(int, Octets const& request) {
    return {{ValueOf42(request)}};
}

class ManyBlocks : public LimitFixture {};

TEST_F(ManyBlocks, ArePolledOnceEachWithASocketEach) {
    LineNetwork network(AnswerReads);
    {
        Plant plant(Tasks);
        AddBlocks(plant, Many);
        EXPECT_EQ(network.OpenSockets(), 0u) << "a socket is opened at its first use";
        plant.Runtime().RunOnce();
        EXPECT_EQ(Answered(plant), Many);
        EXPECT_EQ(plant.Faults(), 0);
        EXPECT_EQ(network.TotalSent(), static_cast<unsigned long>(Many));
        EXPECT_EQ(network.Ports().size(), static_cast<std::size_t>(Many));
    }
    EXPECT_EQ(network.OpenSockets(), 0u) << "all are closed with their blocks";
}

TEST_F(ManyBlocks, AreRunByTheThreadsOfTheirTasks) {
    constexpr unsigned cycles = 5;
    LineNetwork network(AnswerReads);
    Plant plant(Tasks);
    AddBlocks(plant, Many);
    plant.Runtime().Start(cycles);
    EXPECT_TRUE(plant.Runtime().WaitFinished(Patience));
    plant.Runtime().Stop();
    EXPECT_EQ(Answered(plant), Many);
    EXPECT_EQ(plant.Faults(), 0);
    EXPECT_EQ(network.TotalSent(), static_cast<unsigned long>(Many) * cycles);
}

// The first 20 blocks behind routers use the ports above that of BACnet/IP; the others use any free one.
TEST_F(ManyBlocks, BehindRoutersUseTheTwentyPortsBeforeOthers) {
    LineNetwork network([](int, Octets const& request) {
        Octets const object(request.begin() + 17, request.begin() + 21);
        Octets const results = ResultOf(property::PresentValue, Real42Octets());
        return std::vector<LineAnswer>{{WholeAnswer(request.at(14), ResultsOf(object, results))}};
    });
    {
        Plant plant(Tasks);
        AddBlocks(plant, Many, "NetworkNumber = 5, Address = '192.168.10.1:47808', MAC = '10:20',");
        EXPECT_EQ(network.OpenSockets(), static_cast<std::size_t>(RoutedPorts));
        EXPECT_EQ(*network.Ports().begin(), NLBasePort + 1);
        EXPECT_EQ(*network.Ports().rbegin(), NLBasePort + RoutedPorts);
        plant.Runtime().RunOnce();
        EXPECT_EQ(network.OpenSockets(), static_cast<std::size_t>(Many));
        EXPECT_EQ(Answered(plant), Many);
    }
    EXPECT_EQ(network.OpenSockets(), 0u);
}

// When the system has no socket left, the blocks without one report a fault and the others are not affected.
// A socket that is closed can be used in the next cycle.
TEST_F(ManyBlocks, WithoutASocketReportAFaultUntilThereIsOne) {
    LineNetwork network(AnswerReads);
    network.LimitSockets(Many - 100);
    Plant plant(Tasks);
    AddBlocks(plant, Many);
    plant.Runtime().RunOnce();
    EXPECT_EQ(Answered(plant), Many - 100);
    EXPECT_EQ(plant.Faults(), 100);
    network.LimitSockets(Many);
    plant.Runtime().RunOnce();
    EXPECT_EQ(Answered(plant), Many);
    EXPECT_EQ(plant.Faults(), 0);
}

TEST_F(ManyBlocks, NeedWorkAndMemoryInProportion) {
    LineNetwork network(AnswerReads);
    auto const live = [](int count, HeapTotals& poll, long long& held) {
        AllocationWatch const watch;
        Plant plant(Tasks);
        AllocationWatch const blocks;
        AddBlocks(plant, count);
        held = blocks.Growth();
        AllocationWatch const cycle;
        plant.Runtime().RunOnce();
        poll = cycle.Made();
        return watch.Made();
    };
    HeapTotals smallPoll;
    HeapTotals largePoll;
    long long smallHeld = 0;
    long long largeHeld = 0;
    live(1, smallPoll, smallHeld);  // builds the tables of the first use
    HeapTotals const small = live(Many / 2, smallPoll, smallHeld);
    HeapTotals const large = live(Many, largePoll, largeHeld);
    EXPECT_LT(Ratio(large, small), 2.1);
    EXPECT_LT(Ratio(largePoll, smallPoll), 2.1);
    EXPECT_LT(static_cast<double>(largeHeld), 2.1 * static_cast<double>(smallHeld));
    EXPECT_LT(largeHeld / Many, 8192) << "octets a block, besides Lua's";
}

TEST_F(ManyBlocks, CreatedAndDestroyedRepeatedlyLeaveNothing) {
    LineNetwork network(AnswerReads);
    auto const live = [] {
        Plant plant(Tasks);
        AddBlocks(plant, 100);
        plant.Runtime().RunOnce();
    };
    live();  // builds the tables of the first use
    AllocationWatch const watch;
    for (int round = 0; round < 10; ++round) {
        live();
    }
    EXPECT_EQ(watch.Growth(), 0);
}

}  // namespace
