#include "RunFigures.h"

#include <gtest/gtest.h>

#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

TEST(RunFigures, AreZeroBeforeTheFirstCycle) {
    RunFigures const figures;
    EXPECT_FALSE(figures.Has(Trouble::Fault));
    EXPECT_EQ(figures.Summary({}),
              "cycles                0\n"
              "faults                0  (cycles of a block that ended in fault)\n"
              "objects polled        0  (in cycles without fault)\n"
              "requests              0\n"
              "answers               0\n"
              "round trip            - (no answer came)\n");
}

TEST(RunFigures, CountCyclesFaultsAndObjects) {
    BlockConfig config;
    config.name = "AHU";
    NameRow const* const input = ObjectTypes().FindCode(1);
    NameRow const* const output = ObjectTypes().FindCode(2);
    NameRow const* const property = Properties().FindCode(0);
    config.variables = {{"A", OpcUaType_Float, input, property, 1, 0},
                        {"B", OpcUaType_Float, input, Properties().FindCode(28), 1, 0},
                        {"C", OpcUaType_Float, output, property, 1, 0},
                        {"D", OpcUaType_Float, output, property, 2, 0}};
    BlockSnapshot block;
    block.config = &config;
    block.cycle = 1;
    block.isReported = true;
    block.times = {3, 5000, 4000, 31000, 2};

    RunFigures figures;
    figures.Count(std::make_shared<BlockSnapshot const>(block));
    figures.Count(std::make_shared<BlockSnapshot const>(block));
    EXPECT_FALSE(figures.Has(Trouble::Fault));
    block.fault = true;
    figures.Count(std::make_shared<BlockSnapshot const>(block));
    EXPECT_TRUE(figures.Has(Trouble::Fault));

    TrafficFigures traffic;
    traffic.requests = 8;
    traffic.answers = 6;
    traffic.trips.Add(4120);
    traffic.trips.Add(18730);
    EXPECT_EQ(figures.Summary(traffic),
              "cycles                3\n"
              "faults                1  (cycles of a block that ended in fault)\n"
              "objects polled        6  (in cycles without fault)\n"
              "requests              8\n"
              "answers               6\n"
              "round trip        1.143 ms median, 1.873 ms maximum\n"
              "AHU: cycle 0.4 ms median, 3.1 ms maximum, 2 overruns\n");
}

TEST(RunFigures, EndWithTheStatesOfTheValuesThatWereSet) {
    Plant plant;
    BlockSnapshot& block = plant.AddBlock("AHU");
    plant.AddVariable("left alone", OpcUaType_Float, {});
    plant.AddVariable("setpoint", OpcUaType_Float, {});
    WriteState& write = block.variables[1].write;
    write.stage = WriteStage::Pending;
    write.value.SetFloat(22);
    RunFigures figures;
    figures.Count(std::make_shared<BlockSnapshot const>(block));
    write.stage = WriteStage::Refused;
    write.reason = "WriteAccessDenied";
    figures.Count(std::make_shared<BlockSnapshot const>(block));
    std::string const text = figures.Summary({});
    std::string const line = "AHU.setpoint = 22 refused (WriteAccessDenied)\n";
    EXPECT_EQ(text.substr(text.size() - line.size()), line) << text;
    EXPECT_EQ(text.find("left alone"), std::string::npos);
    EXPECT_EQ(text.find("pending"), std::string::npos);
}

TEST(RunFigures, ListCausesAndSuspectValues) {
    Plant plant;
    BlockSnapshot& block = plant.AddBlock("AHU");
    plant.AddVariable("air", OpcUaType_Float, {});
    plant.AddVariable("sun", OpcUaType_Float, {});
    block.causes = {{CauseKind::Silent, "", "no answer since 12:34:56 (3 requests)", 3, Noon}};
    block.variables[1].suspect = "device: unknown-object";
    RunFigures figures;
    figures.Count(std::make_shared<BlockSnapshot const>(block));
    std::string const text = figures.Summary({});
    std::string const end =
        "AHU: no answer since 12:34:56 (3 requests)\nAHU.sun: suspect, device: unknown-object\n";
    EXPECT_EQ(text.substr(text.size() - end.size()), end) << text;
}

TEST(RunFigures, HaveATroubleAsLongAsABlockHasIt) {
    Plant plant;
    BlockSnapshot& block = plant.AddBlock("AHU");
    plant.AddVariable("air", OpcUaType_Float, {});
    RunFigures figures;
    figures.Count(std::make_shared<BlockSnapshot const>(block));
    for (std::string const& name : TroubleNames()) {
        EXPECT_FALSE(figures.Has(*TroubleOfName(name))) << name;
    }
    std::pair<Trouble, WriteStage> const stages[] = {{Trouble::Refused, WriteStage::Refused},
                                                     {Trouble::Pending, WriteStage::Pending},
                                                     {Trouble::Differs, WriteStage::Differs},
                                                     {Trouble::Unconfirmed, WriteStage::Unconfirmed}};
    for (auto const& [trouble, stage] : stages) {
        block.variables[0].write.stage = stage;
        figures.Count(std::make_shared<BlockSnapshot const>(block));
        EXPECT_TRUE(figures.Has(trouble)) << StageName(stage);
        EXPECT_FALSE(figures.Has(Trouble::Suspect));
    }
    block.variables[0].write.stage = WriteStage::Written;
    block.variables[0].suspect = "device: unknown-property";
    block.times.overruns = 1;
    figures.Count(std::make_shared<BlockSnapshot const>(block));
    EXPECT_TRUE(figures.Has(Trouble::Suspect));
    EXPECT_TRUE(figures.Has(Trouble::Overrun));
    EXPECT_FALSE(figures.Has(Trouble::Unconfirmed));
    EXPECT_FALSE(TroubleOfName("trouble"));
}

TEST(RunFigures, AStandbyIsNotInFaultAndPollsNothing) {
    Plant plant;
    BlockSnapshot& block = plant.AddBlock("AHU");
    plant.AddVariable("air", OpcUaType_Float, {});
    block.isReported = false;
    block.isStandby = true;
    RunFigures figures;
    figures.Count(std::make_shared<BlockSnapshot const>(block));
    EXPECT_FALSE(figures.Has(Trouble::Fault));
    EXPECT_NE(figures.Summary({}).find("objects polled        0"), std::string::npos);
}

TEST(RunFigures, ABlockThatRecoversIsNotInFault) {
    Plant plant;
    BlockSnapshot& block = plant.AddBlock("B");
    RunFigures figures;
    block.fault = true;
    figures.Count(std::make_shared<BlockSnapshot const>(block));
    block.fault = false;
    figures.Count(std::make_shared<BlockSnapshot const>(block));
    EXPECT_FALSE(figures.Has(Trouble::Fault));
}

}  // namespace
