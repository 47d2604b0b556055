// Behaviour that installed devices and controllers rely on or tolerate. The driver must keep it;
// docs/reliability.md documents what an operator sees of it.

#include <gtest/gtest.h>

#include <algorithm>

#include "BACnet_protocol.h"
#include "FaultTable.h"
#include "Heap.h"
#include "Hex.h"
#include "dorvelshare/Trace.h"

using namespace test;
using simulator::Fault;
using simulator::FaultKind;

namespace {

Fault Once(FaultKind kind) {
    Fault fault = simulator::MakeFault(kind);
    fault.times = 1;
    return fault;
}

// The most octets on the heap while the driver acknowledges this number of segments.
long long HighestHeap(long long segments) {
    Plant plant(Path::Plain);
    plant.Settle();
    long long highest = 0;
    plant.World().Watch([&highest] { highest = std::max(highest, HeapOctets()); });
    long long const before = HeapOctets();
    plant.Faults().Add(Once(FaultKind::EndlessSegments));
    plant.CutOffAfter(segments);
    plant.Run();
    EXPECT_TRUE(plant.IsCutOff());
    return highest - before;
}

TEST(Habits, AnAnswerWithoutEndIsKeptAs256SegmentsAtMost) {
    long long const some = HighestHeap(300);
    EXPECT_EQ(HighestHeap(3000), some);
    EXPECT_LT(some, 256 * 1024);
}

TEST(Habits, SegmentsHoldTheCycleForAsLongAsTheyCome) {
    Plant plant(Path::Plain);
    Fault fault = Once(FaultKind::EndlessSegments);
    fault.delay = std::chrono::milliseconds(900);
    fault.count = 500;
    plant.Faults().Add(fault);
    EXPECT_GE(plant.Run().duration, 500 * 900);
    EXPECT_EQ(plant.Run().report, Report::Good);
}

TEST(Habits, OtherAnswersAfterAWriteHoldTheCycleForAsLongAsTheyCome) {
    Plant plant(Path::Write);
    plant.Settle();
    EXPECT_EQ(plant.Run().duration, Wait);
    constexpr int answers = 50;
    constexpr long long distance = 900;
    for (int answer = 1; answer <= answers; ++answer) {
        plant.Inject(Plant::Pause + answer * distance, Hex("81 0A 00 09 01 00 20 FE 0F"));
    }
    Plant::Cycle const held = plant.Run();
    EXPECT_EQ(held.duration, answers * distance + Wait);
    EXPECT_EQ(held.report, Report::Good);
    EXPECT_EQ(plant.Run().duration, Wait);
}

TEST(Habits, ASegmentedReadAndAWriteCostOneWaitMoreEach) {
    EXPECT_EQ(Plant(Path::Plain).Run().duration, 0);
    EXPECT_EQ(Plant(Path::Segmented).Run().duration, Plant::SizesOf(Path::Segmented).objects * Wait);
    EXPECT_EQ(Plant(Path::Write).Run().duration, Wait);
}

// An answer is cut at every position, with the original length in its header and with the new one. Only a
// segment whose header fits again is not distinguishable from a whole one; it is accepted if it can be
// decoded.
TEST(Habits, AnAnswerThatIsCutAnywhereIsRequestedAgain) {
    for (Path const path : {Path::Plain, Path::Segmented, Path::Routed, Path::Write}) {
        Plant plant(path);
        Sizes const sizes = Plant::SizesOf(path);
        for (int cut = 0; cut < 120; ++cut) {
            plant.Settle();
            Fault fault = Once(FaultKind::Truncate);
            fault.octet = static_cast<std::size_t>(cut / 2);
            fault.mends = cut % 2 == 0;
            fault.on = path == Path::Write ? simulator::FaultScope::Write : simulator::FaultScope::Read;
            plant.Faults().Add(fault);
            Plant::Cycle const cycle = plant.Run();
            bool const isBelieved = path == Path::Segmented && fault.mends && cycle.report == Report::Wrong;
            EXPECT_TRUE(cycle.report == Report::Good || isBelieved) << NameOf(path) << ", " << fault.octet;
            EXPECT_LE(cycle.duration, (sizes.objects + 1) * Wait) << NameOf(path) << ", " << fault.octet;
        }
    }
}

// The configuration may still use the variables of such a block, so it keeps their ownership.
TEST(Habits, ABlockWithARefusedAddressLeavesItsVariablesToTheConfiguration) {
    using dorvel::BACnet::BACnetProtocol;
    std::map<std::string, OpcUa_VariantHlp> properties;
    ScadaProtocol::ReadChannel const read;
    auto const store = std::make_shared<VariableStore>();
    LuaDataProvider provider(store, nullptr);
    logMsg("the log is made at its first line\n");
    long long const before = HeapOctets();
    auto block = std::make_unique<BACnetProtocol>();
    block->Address = "no address";
    block->SetDataProvider(&provider);
    block->AddChannel(&read, nullptr, properties);
    block->Inited();
    auto left = block->PendingChannels();
    block.reset();
    ASSERT_EQ(left.size(), 1u);
    long long const list = static_cast<long long>(left.capacity() * sizeof left[0]);
    EXPECT_EQ(HeapOctets() - before - list,
              static_cast<long long>(sizeof(DriverVarDsc) + sizeof(dorvel::BACnet::VelaBufferParameters)));
    delete left[0]->descriptor;
    delete left[0];
}

}  // namespace
