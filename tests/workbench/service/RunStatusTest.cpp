#include "RunStatus.h"

#include <gtest/gtest.h>

#include "Snapshots.h"

namespace {

using workbench::OutletHealth;
using workbench::OutletState;
using workbench::RunStatus;

OutletState Outlet(OutletHealth health, std::string const& text) {
    OutletState state;
    state.name = "mqtt";
    state.health = health;
    state.text = text;
    return state;
}

TEST(RunStatus, CountsTheBlocks) {
    test::Plant plant;
    plant.AddBlock("AHU");
    EXPECT_EQ(RunStatus(plant.Shared(), {}), "1 block");
    plant.AddBlock("Chiller", 0);
    EXPECT_EQ(RunStatus(plant.Shared(), {}), "2 blocks, 1 before the first cycle");
}

TEST(RunStatus, NamesThreeBlocksInFaultAndCountsTheOthers) {
    test::Plant plant;
    plant.AddBlock("Good");
    for (char const* const name : {"A\nB", "C", "D", "E", "F"}) {
        workbench::BlockSnapshot& block = plant.AddBlock(name);
        block.fault = true;
        block.errorText = "No connection";
    }
    EXPECT_EQ(RunStatus(plant.Shared(), {}),
              "6 blocks, 5 in fault: A\\nB (No connection), C (No connection), D (No connection) and 2 more");
}

TEST(RunStatus, NamesTheOutletsThatAreNotGood) {
    EXPECT_EQ(RunStatus({}, {Outlet(OutletHealth::Good, "connected")}), "0 blocks");
    EXPECT_EQ(RunStatus({}, {Outlet(OutletHealth::Waiting, "no broker")}),
              "0 blocks; mqtt waiting: no broker");
    EXPECT_EQ(RunStatus({}, {Outlet(OutletHealth::Starting, "")}), "0 blocks; mqtt starting");
}

}  // namespace
