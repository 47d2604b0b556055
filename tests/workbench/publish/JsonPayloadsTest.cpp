#include "JsonPayloads.h"

#include <gtest/gtest.h>

#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

std::string ValueOf(OpcUa_BuiltInTypeHlp const& type, OpcUa_VariantHlp value) {
    Plant plant;
    BlockSnapshot& block = plant.AddBlock("AHU");
    plant.AddVariable("V", type, std::move(value));
    std::string const json = ValueJson(block, block.variables.front());
    return json.substr(0, json.find(R"(,"unit")"));
}

TEST(JsonPayloads, HaveValuesByTheirTypes) {
    EXPECT_EQ(ValueOf(OpcUaType_Boolean, Boolean(true)), R"({"value":true)");
    EXPECT_EQ(ValueOf(OpcUaType_String, Text("a\"b")), R"({"value":"a\"b")");
    EXPECT_EQ(ValueOf(OpcUaType_Float, Float(0.1F)), R"({"value":0.1)");
    EXPECT_EQ(ValueOf(OpcUaType_Float, {}), R"({"value":null)");
    OpcUa_VariantHlp time;
    time.SetTime(Noon);
    EXPECT_EQ(ValueOf(OpcUaType_DateTime, time), R"({"value":"2024-03-15T12:34:56.789+01:00")");
}

TEST(JsonPayloads, HaveTheCausesOfABlock) {
    Plant plant;
    BlockSnapshot& block = plant.AddBlock("AHU");
    block.fault = true;
    block.errorText = "No connection";
    block.causes = {{CauseKind::Silent, "", "no answer (3 requests)", 3},
                    {CauseKind::Silent, "analog-input 1", "no answer", 1}};
    EXPECT_EQ(BlockJson(block, 2),
              R"({"state":"fault","reason":"No connection","causes":["silent","silent: analog-input 1"],)"
              R"("suspect":2,"time":"2024-03-15T12:34:56.789+01:00"})");
}

TEST(JsonPayloads, OfValuesDoNotChangeWithTheReasonOfAFault) {
    Plant plant;
    BlockSnapshot& block = plant.AddBlock("AHU");
    plant.AddVariable("V", OpcUaType_Float, Float(20));
    block.fault = true;
    block.errorText = "No connection";
    std::string const before = ValueJson(block, block.variables.front());
    EXPECT_NE(before.find(R"("quality":"bad","qualityText":"the block is in fault")"), std::string::npos);
    block.errorText = "Timeout";
    EXPECT_EQ(ValueJson(block, block.variables.front()), before);
}

TEST(JsonPayloads, HaveNoTimeForAValueThatWasNeverRead) {
    Plant plant;
    BlockSnapshot& block = plant.AddBlock("AHU");
    plant.AddVariable("V", OpcUaType_Float, {}, OpcUa_BadNoData, 0);
    EXPECT_EQ(
        ValueJson(block, block.variables.front()),
        R"({"value":null,"unit":null,"quality":"bad","qualityText":"No data","suspect":null,"time":null,)"
        R"("object":"analog-input 1","property":"present-value"})");
}

}  // namespace
