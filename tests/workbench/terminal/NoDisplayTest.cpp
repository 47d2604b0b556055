#include <gtest/gtest.h>

#include <sstream>

#include "Display.h"
#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

// A block "AHU" with the variable "T", whose cycles are shown by nothing but the log.
class WithoutADisplay : public testing::Test {
protected:
    WithoutADisplay() {
        plant.AddVariable("T", OpcUaType_Float, {});
        ahu.isReported = true;
    }

    // What a cycle adds to the log.
    std::string Cycle() {
        ++ahu.cycle;
        ahu.time += Second;
        events.Follow(std::make_shared<BlockSnapshot const>(ahu));
        stream.str("");
        display.Refresh();
        return stream.str();
    }

    Plant plant;
    BlockSnapshot& ahu = plant.AddBlock("AHU", 0);
    EventList events;
    std::ostringstream stream;
    LogBuffer log{&stream};
    NoDisplay display{log, events};
};

TEST_F(WithoutADisplay, FaultsAndTheirEndsAreInTheLog) {
    EXPECT_EQ(Cycle(), "");
    ahu.fault = true;
    ahu.errorText = "No connection";
    EXPECT_EQ(Cycle(), "2024-03-15T12:34:58.789+01:00 [AHU] fault: No connection\n");
    EXPECT_EQ(Cycle(), "");
    ahu.fault = false;
    EXPECT_EQ(Cycle(), "2024-03-15T12:35:00.789+01:00 [AHU] recovery: OK\n");
}

TEST_F(WithoutADisplay, AnEventOfAVariableNamesIt) {
    ahu.variables[0].suspect = "device: unknown-object";
    EXPECT_EQ(Cycle(),
              "2024-03-15T12:34:57.789+01:00 [AHU, analog-input 1, T] suspect: device: unknown-object\n");
    ASSERT_EQ(log.About("AHU", *ahu.variables[0].config, 1).size(), 1u);
}

TEST_F(WithoutADisplay, WhatTheLogHasAnywayIsNotThereTwice) {
    ahu.variables[0].write.stage = WriteStage::Pending;
    EXPECT_EQ(Cycle(), "");
    ahu.isStandby = true;
    EXPECT_EQ(Cycle(), "");
}

}  // namespace
