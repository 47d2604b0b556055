// Many cycles with random faults, after which nothing may be left.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <random>

#include "CodeMaps.h"
#include "Heap.h"
#include "PduParser.h"
#include "Plant.h"

using namespace test;
using simulator::Fault;

namespace {

// A cycle costs many times as much in a debug or sanitized build and in the target's emulator.
#if defined(NDEBUG) && !defined(__arm__)
constexpr int UsualCycles = 100'000;
#else
constexpr int UsualCycles = 20'000;
#endif
constexpr int CyclesBefore = 1000;

class RandomFaults {
    // Those of discovery are the last ones.
    static constexpr std::size_t KindsMet = static_cast<std::size_t>(simulator::FaultKind::OtherInstance);
    static_assert(simulator::IsOfDiscovery(simulator::FaultKind::OtherInstance) &&
                  !simulator::IsOfDiscovery(simulator::FaultRows[KindsMet - 1].kind));

public:
    // A fault of any kind that a driver meets, with random parameters where it has them, for up to five
    // requests or six seconds.
    Fault Next() {
        Fault fault = simulator::MakeFault(simulator::FaultRows[Below(KindsMet)].kind);
        fault.delay = std::chrono::milliseconds(Below(2500));
        fault.octet = Below(80);
        fault.mends = Below(2) == 0;
        fault.headers = static_cast<simulator::FaultHeaders>(Below(3));
        fault.octets = Below(60);
        fault.segment = static_cast<std::uint32_t>(Below(4));
        fault.count = 1 + Below(300);  // an answer without end would never end
        fault.on = static_cast<simulator::FaultScope>(Below(3));
        fault.chance = 0.25 + 0.75 * static_cast<double>(Below(100)) / 100;
        fault.seed = static_cast<std::uint32_t>(random());
        if (Below(2) == 0) {
            fault.times = 1 + static_cast<std::uint32_t>(Below(5));
        } else {
            fault.duration = std::chrono::milliseconds(Below(6000));
        }
        return fault;
    }
    std::size_t Below(std::size_t limit) { return random() % limit; }

private:
    std::mt19937 random{2024};
};

// The resources that must not grow.
struct Holdings {
    long long heapOctets;
    long long heapBlocks;
    long long scriptOctets;
    std::size_t descriptors;
    int sockets;
    std::size_t objectTypes;
    std::size_t properties;
    std::size_t parsers;

    static Holdings Of(Plant& plant) {
        auto const descriptors = std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                                               std::filesystem::directory_iterator());
        return {HeapOctets(),
                HeapBlocks(),
                plant.ScriptOctets(),
                static_cast<std::size_t>(descriptors),
                plant.World().OpenSockets(),
                dorvel::BACnet::objectTypesMap.size(),
                dorvel::BACnet::propertyTypesMap.size(),
                PduParser::PduParsers.size()};
    }
};

class Soak : public testing::Test {
protected:
    void RunCycles(int count) {
        for (int cycle = 0; cycle < count; ++cycle) {
            if (faults.Below(4) == 0) {
                plant.Faults().Add(faults.Next());
            }
            Plant::Cycle const done = plant.Run();
            ++reports[static_cast<std::size_t>(done.report)];
            logged += done.log.empty() ? 0 : 1;
            ASSERT_TRUE(done.isBystanderGood);
            plant.TakeBystanderRequests();
        }
    }

    static int Cycles() {
        char const* const given = std::getenv("DORVEL_SOAK_CYCLES");
        return given ? std::max(std::atoi(given), 10 * CyclesBefore) : UsualCycles;
    }

    long long logged = 0;
    Plant plant{Path::Mixed};
    RandomFaults faults;
    long long reports[5] = {};
};

TEST_F(Soak, LeavesNothing) {
    int const cycles = Cycles();
    RunCycles(CyclesBefore);
    plant.Settle();
    Holdings const before = Holdings::Of(plant);

    auto const start = std::chrono::steady_clock::now();
    RunCycles(cycles - CyclesBefore);
    std::chrono::duration<double> const seconds = std::chrono::steady_clock::now() - start;
    plant.Settle();
    Holdings const after = Holdings::Of(plant);

    std::printf(
        "%d cycles in %.1f s, %.0f a second: %lld good, %lld old, %lld wrong, %lld in fault, %lld other; "
        "%lld left lines in the log\n",
        cycles, seconds.count(), (cycles - CyclesBefore) / seconds.count(), reports[0], reports[1],
        reports[2], reports[3], reports[4], logged);
    EXPECT_EQ(after.heapOctets, before.heapOctets);
    EXPECT_EQ(after.heapBlocks, before.heapBlocks);
    EXPECT_EQ(after.scriptOctets, before.scriptOctets);
    EXPECT_EQ(after.descriptors, before.descriptors);
    EXPECT_EQ(after.sockets, before.sockets);
    EXPECT_EQ(after.objectTypes, before.objectTypes);
    EXPECT_EQ(after.properties, before.properties);
    EXPECT_EQ(after.parsers, before.parsers);
    EXPECT_EQ(plant.Run().report, Report::Good);
    EXPECT_GT(reports[static_cast<std::size_t>(Report::Good)], cycles / 10);
    EXPECT_GT(reports[static_cast<std::size_t>(Report::Fault)], cycles / 20);
}

}  // namespace
