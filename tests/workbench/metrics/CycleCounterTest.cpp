#include "CycleCounter.h"

#include <gtest/gtest.h>

#include "MetricsFixture.h"

using namespace test;
using namespace workbench;

namespace {

class CycleCounterTest : public testing::Test {
protected:
    void Cycle(WriteStage stage, bool fault = false) {
        plant.Cycle({Float(1)});
        plant.snapshots.front().variables.front().write.stage = stage;
        plant.snapshots.front().fault = fault;
        counter.Follow(plant.State().blocks.front());
    }
    unsigned long long Writes(WriteStage stage) const {
        return counter.Counts().front().writes[static_cast<std::size_t>(stage)];
    }

    static MetricsPlant OneBlock() {
        MetricsPlant plant;
        plant.AddBlock("AHU");
        plant.AddVariable("T", OpcUaType_Float).write = true;
        return plant;
    }

    MetricsPlant plant = OneBlock();
    CycleCounter counter{plant.blocks};
};

TEST_F(CycleCounterTest, CountsCyclesInFault) {
    Cycle(WriteStage::None, true);
    Cycle(WriteStage::None, false);
    Cycle(WriteStage::None, true);
    EXPECT_EQ(counter.Counts().front().faults, 2u);
}

TEST_F(CycleCounterTest, CountsAWriteOnceAStage) {
    for (WriteStage const stage : {WriteStage::Pending, WriteStage::Pending, WriteStage::Written,
                                   WriteStage::Written, WriteStage::Pending, WriteStage::Refused}) {
        Cycle(stage);
    }
    EXPECT_EQ(Writes(WriteStage::Pending), 2u);
    EXPECT_EQ(Writes(WriteStage::Written), 1u);
    EXPECT_EQ(Writes(WriteStage::Refused), 1u);
    EXPECT_EQ(Writes(WriteStage::None), 0u);
}

TEST_F(CycleCounterTest, IgnoresABlockThatItDoesNotHave) {
    MetricsPlant other;
    other.AddBlock("Other");
    other.Cycle({});
    counter.Follow(other.State().blocks.front());
    EXPECT_EQ(counter.Counts().size(), 1u);
}

}  // namespace
