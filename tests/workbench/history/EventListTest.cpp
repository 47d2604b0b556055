#include "EventList.h"

#include <gtest/gtest.h>

#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

OpcUa_VariantHlp FloatOf(float value) {
    OpcUa_VariantHlp variant;
    variant.SetFloat(value);
    return variant;
}

// A block "AHU" with the variable "T"; each Cycle passes it on as it is then.
class EventsOfABlock : public testing::Test {
protected:
    EventsOfABlock() {
        plant.AddVariable("T", OpcUaType_Float, FloatOf(20));
        block.config = ahu.config;
    }

    // The events of the cycle, each as "kind text".
    std::vector<std::string> Cycle() {
        unsigned long long const before = events.Newest();
        ahu.time += Second;
        ++ahu.cycle;
        events.Follow(std::make_shared<BlockSnapshot const>(ahu));
        std::vector<std::string> lines;
        for (Event const& event : events.Since(before)) {
            lines.push_back(std::string(EventName(event.kind)) + " " + event.text);
        }
        return lines;
    }
    WriteState& Write() { return ahu.variables[0].write; }

    using Lines = std::vector<std::string>;
    Plant plant;
    BlockSnapshot& ahu = plant.AddBlock("AHU", 0);
    BlockSnapshot block;
    EventList events;
};

TEST_F(EventsOfABlock, AreNoneAsLongAsNothingHappens) {
    ahu.isReported = true;
    EXPECT_EQ(Cycle(), Lines());
    ahu.variables[0].state.Value = FloatOf(21);
    EXPECT_EQ(Cycle(), Lines());
    EXPECT_EQ(events.Newest(), 0u);
}

TEST_F(EventsOfABlock, AreAFaultWithItsReasonAndItsRecovery) {
    ahu.isReported = true;
    Cycle();
    ahu.fault = true;
    ahu.errorText = "No connection";
    ahu.causes = {{CauseKind::Silent, "", "no answer since 09:30:33 (3 requests)"}};
    EXPECT_EQ(Cycle(), Lines{"fault No connection: no answer since 09:30:33 (3 requests)"});
    EXPECT_EQ(Cycle(), Lines());
    ahu.fault = false;
    ahu.causes.clear();
    EXPECT_EQ(Cycle(), Lines{"recovery OK"});
}

TEST_F(EventsOfABlock, AreAFaultInTheFirstCycleToo) {
    EXPECT_EQ(Cycle(), Lines{"fault not polled"});
}

TEST_F(EventsOfABlock, NameTheStandby) {
    ahu.isReported = true;
    Cycle();
    ahu.isStandby = true;
    EXPECT_EQ(Cycle(), Lines{"standby the host is the standby and does not poll this block"});
    ahu.isStandby = false;
    EXPECT_EQ(Cycle(), Lines{"standby-end this block is polled again"});
}

TEST_F(EventsOfABlock, FollowAWriteFromTheUserToTheDevice) {
    ahu.isReported = true;
    Cycle();
    Write() = {WriteStage::Pending, FloatOf(22), {}, {}};
    EXPECT_EQ(Cycle(), Lines{"set 22 pending"});
    EXPECT_EQ(Cycle(), Lines());
    Write() = {WriteStage::Refused, FloatOf(22), "write-access-denied", {}};
    EXPECT_EQ(Cycle(), Lines{"refused 22 refused (write-access-denied)"});
    Write() = {WriteStage::Pending, FloatOf(22), {}, {}};
    Cycle();
    Write().stage = WriteStage::Written;
    EXPECT_EQ(Cycle(), Lines{"written 22 written"});
    Event const event = events.Since(0).back();
    EXPECT_EQ(event.id, events.Newest());
    EXPECT_EQ(event.block, ahu.config);
    EXPECT_EQ(event.variable, ahu.variables[0].config);
    EXPECT_EQ(event.time, ahu.time);
    EXPECT_EQ(event.localDiff, Hour);
}

TEST_F(EventsOfABlock, NameASuspectAndItsEnd) {
    ahu.isReported = true;
    Cycle();
    ahu.variables[0].suspect = "device: unknown-object";
    EXPECT_EQ(Cycle(), Lines{"suspect device: unknown-object"});
    ahu.variables[0].suspect = "device: unknown-property";
    EXPECT_EQ(Cycle(), Lines{"suspect device: unknown-property"});
    ahu.variables[0].suspect.clear();
    EXPECT_EQ(Cycle(), Lines{"suspect-end no longer device: unknown-property"});
}

TEST_F(EventsOfABlock, AreOnOneLineAndBoundedInLength) {
    ahu.isReported = ahu.fault = true;
    ahu.errorText = "a\n" + std::string(5000, 'x');
    Lines const lines = Cycle();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].substr(0, 10), "fault a\\nx");
    EXPECT_LE(lines[0].size(), 540u);
}

TEST_F(EventsOfABlock, AreCountedWhenACycleHasTooManyOfAKind) {
    ahu.isReported = true;
    for (int i = 0; i < 1000; ++i) {
        plant.AddVariable("V", OpcUaType_Float, FloatOf(1));
    }
    for (VariableSnapshot& variable : ahu.variables) {
        variable.suspect = "device: unknown-object";
    }
    Lines const lines = Cycle();
    ASSERT_EQ(lines.size(), EventList::MostOfCycle + 1);
    EXPECT_EQ(lines.back(), "suspect and 901 more variables in this cycle");
}

TEST_F(EventsOfABlock, KeepTheNewest) {
    ahu.isReported = true;
    for (std::size_t i = 0; i < EventList::Most + 100; ++i) {
        ahu.fault = !ahu.fault;
        Cycle();
    }
    std::vector<Event> const kept = events.Since(0);
    ASSERT_EQ(kept.size(), EventList::Most);
    EXPECT_EQ(kept.front().id, 101u);
    EXPECT_EQ(kept.back().id, EventList::Most + 100);
    EXPECT_EQ(events.Since(5098).size(), 2u);
    EXPECT_EQ(events.Since(events.Newest()).size(), 0u);
    EXPECT_EQ(events.Since(1000000).size(), 0u);
    EXPECT_EQ(events.Since(0, 3).front().id, EventList::Most + 98);
}

TEST_F(EventsOfABlock, AreFoundByVariableAndBlock) {
    ahu.isReported = true;
    ahu.fault = true;
    ahu.variables[0].suspect = "device: unknown-object";
    Cycle();
    BlockConfig const other;
    VariableConfig const unknown = *ahu.variables[0].config;
    EXPECT_EQ(events.Of(*ahu.config, 10).size(), 2u);
    EXPECT_EQ(events.Of(*ahu.config, 1).size(), 1u);
    EXPECT_EQ(events.Of(*ahu.variables[0].config, 10).size(), 1u);
    EXPECT_TRUE(events.Of(other, 10).empty());
    EXPECT_TRUE(events.Of(unknown, 10).empty());
}

}  // namespace
