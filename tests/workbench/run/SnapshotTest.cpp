#include "Snapshot.h"

#include <gtest/gtest.h>

#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

TEST(Snapshot, ABlockIsWaitingInFaultOrOk) {
    Plant plant;
    BlockSnapshot& block = plant.AddBlock("B", 0);
    EXPECT_EQ(StateText(block), "waiting");
    EXPECT_FALSE(IsFault(block));
    block.cycle = 1;
    EXPECT_EQ(StateText(block), "FAULT not polled");
    EXPECT_TRUE(IsFault(block));
    block.isReported = true;
    EXPECT_EQ(StateText(block), "OK");
    block.fault = true;
    block.errorText = "No connection";
    EXPECT_EQ(StateText(block), "FAULT No connection");
}

}  // namespace
