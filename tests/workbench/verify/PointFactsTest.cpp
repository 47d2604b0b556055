#include "PointFacts.h"

#include <gtest/gtest.h>

#include "NameTable.h"

using namespace workbench;

namespace {

VariableConfig Variable(char const* name, char const* object, int number, char const* property) {
    VariableConfig variable;
    variable.name = name;
    variable.objectType = ObjectTypes().FindName(object);
    variable.property = Properties().FindName(property);
    variable.objectNumber = number;
    return variable;
}

BlockConfig Block(std::vector<VariableConfig> variables) {
    BlockConfig block;
    block.variables = std::move(variables);
    return block;
}

}  // namespace

TEST(PointFacts, ObjectsAreInTheOrderOfThePoll) {
    auto const objects = PolledObjects(Block(
        {Variable("a", "schedule", 1, "present-value"), Variable("b", "analog-input", 2, "present-value"),
         Variable("c", "analog-input", 1, "present-value"), Variable("d", "analog-input", 2, "units")}));
    ASSERT_EQ(objects.size(), 3u);
    EXPECT_EQ(objects[0].points, std::vector<std::size_t>{2});
    EXPECT_EQ(objects[1].points, (std::vector<std::size_t>{1, 3}));
    EXPECT_EQ(objects[2].points, std::vector<std::size_t>{0});
}

TEST(PointFacts, TypesAreThoseOfTheDriver) {
    auto const facts = FactsOf(Block({Variable("a", "analog-input", 1, "present-value"),
                                      Variable("b", "binary-value", 1, "present-value"),
                                      Variable("c", "schedule", 1, "weekly-schedule")}),
                               5);
    EXPECT_EQ(facts[0].type, PropertyTypeEnum::Real);
    EXPECT_EQ(facts[1].type, PropertyTypeEnum::Binary_PV);
    EXPECT_EQ(facts[2].type, PropertyTypeEnum::Weekly_Schedule);
    EXPECT_EQ(facts[0].object, "analog-input 1");
    EXPECT_EQ(facts[0].localDiff, 5);
    EXPECT_EQ(facts[0].undecodable + facts[0].readBefore, "");
}

TEST(PointFacts, WhatTheDriverCannotDecodeConcernsTheWholeObjectAndNoOther) {
    auto const facts = FactsOf(Block({Variable("a", "analog-input", 1, "present-value"),
                                      Variable("b", "analog-input", 1, "resolution"),
                                      Variable("c", "analog-input", 2, "present-value")}),
                               0);
    EXPECT_EQ(facts[0].undecodable, "the driver cannot decode resolution of analog-input");
    EXPECT_EQ(facts[1].undecodable, facts[0].undecodable);
    EXPECT_EQ(facts[2].undecodable, "");
    EXPECT_FALSE(facts[1].type);
}

TEST(PointFacts, LightingOutputsAreNotDecodedForTheirStatusFlags) {
    auto const facts = FactsOf(Block({Variable("a", "lighting-output", 1, "present-value")}), 0);
    EXPECT_EQ(facts[0].undecodable,
              "the driver cannot decode status-flags of lighting-output, which it always requests");
}

TEST(PointFacts, PropertiesAbove255AreRequestedAsOthers) {
    auto const undecodable = [](char const* property) {
        return FactsOf(Block({Variable("a", "lighting-output", 1, property)}), 0)[0].undecodable;
    };
    EXPECT_EQ(undecodable("blink-warn-enable"), "the driver requests units in place of blink-warn-enable");
    EXPECT_NE(undecodable("instantaneous-power").find("in place of instantaneous-power"), std::string::npos);
    EXPECT_NE(undecodable("power").find("in place of power"), std::string::npos);
    EXPECT_NE(undecodable("is-utc").find("in place of is-utc"), std::string::npos);
}

TEST(PointFacts, OnlyTheFirstVariableOfAPropertyGetsAValue) {
    auto const facts = FactsOf(
        Block({Variable("a", "analog-input", 1, "present-value"), Variable("b", "analog-input", 1, "units"),
               Variable("c", "analog-input", 1, "present-value"),
               Variable("d", "analog-input", 2, "present-value")}),
        0);
    EXPECT_EQ(facts[0].readBefore, "");
    EXPECT_EQ(facts[1].readBefore, "");
    EXPECT_EQ(facts[2].readBefore, "a");
    EXPECT_EQ(facts[3].readBefore, "");
}
