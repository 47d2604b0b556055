#include "HistoryCsv.h"

#include <gtest/gtest.h>

#include <limits>

#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

TEST(HistoryCsv, OfATrendHasARowForEachSample) {
    Plant plant;
    BlockSnapshot const& block = plant.AddBlock("=AHU");
    VariableConfig& variable = plant.AddVariable("Supply, \"1\"", DataValueOf(OpcUaType_Float), {});
    variable.unit = "degrees-celsius";
    std::vector<Sample> const samples = {{Noon, -21.1, QualityKind::Good},
                                         {Noon + Second, NaN, QualityKind::Bad}};
    EXPECT_EQ(TrendHeader() + TrendRows(*block.config, variable, samples, Hour),
              "time,block,variable,value,unit,state_text,quality\r\n"
              "2024-03-15T12:34:56.789+01:00,'=AHU,\"Supply, \"\"1\"\"\",-21.1,degrees-celsius,,good\r\n"
              "2024-03-15T12:34:57.789+01:00,'=AHU,\"Supply, \"\"1\"\"\",,degrees-celsius,,bad\r\n");
}

TEST(HistoryCsv, OfAStateHasItsText) {
    Plant plant;
    BlockSnapshot const& block = plant.AddBlock("AHU");
    VariableConfig& variable = plant.AddVariable("Release", OpcUaType_Boolean, {});
    variable.objectType = ObjectTypes().FindName("binary-value");
    variable.stateTexts = {"blocked", "@released"};
    std::string const rows = TrendRows(*block.config, variable, {{Noon, 1, QualityKind::Uncertain}}, Hour);
    EXPECT_EQ(rows, "2024-03-15T12:34:56.789+01:00,AHU,Release,1,,'@released,uncertain\r\n");
}

TEST(HistoryCsv, OfEventsHasARowForEach) {
    Plant plant;
    BlockSnapshot const& block = plant.AddBlock("AHU");
    VariableConfig const& variable = plant.AddVariable("Valve", OpcUaType_Float, {});
    std::vector<Event> const events = {
        {7, Noon, Hour, EventKind::Fault, block.config, nullptr, "No connection"},
        {8, Noon, Hour, EventKind::Refused, block.config, &variable, "-5 refused (write-access-denied)"}};
    EXPECT_EQ(EventsCsv(events),
              "id,time,event,block,variable,text\r\n"
              "7,2024-03-15T12:34:56.789+01:00,fault,AHU,,No connection\r\n"
              "8,2024-03-15T12:34:56.789+01:00,refused,AHU,Valve,'-5 refused (write-access-denied)\r\n");
}

}  // namespace
