#include "PlantTopics.h"

#include <gtest/gtest.h>

#include "Projects.h"

using namespace test;
using namespace workbench;

namespace {

std::deque<BlockConfig> BlocksOf(std::vector<std::pair<std::string, std::vector<std::string>>> const& names) {
    std::deque<BlockConfig> blocks;
    for (auto const& [block, variables] : names) {
        blocks.emplace_back();
        blocks.back().name = block;
        blocks.back().where.place = {"plant.lua", 7};
        for (std::string const& variable : variables) {
            blocks.back().variables.emplace_back();
            blocks.back().variables.back().name = variable;
            blocks.back().variables.back().where.place = {"plant.lua", 9};
        }
    }
    return blocks;
}

std::string MistakeOf(std::string const& prefix, std::deque<BlockConfig> const& blocks) {
    try {
        PlantTopics const topics(prefix, blocks);
    } catch (ProjectError const& mistake) {
        return mistake.what();
    }
    return "none";
}

TEST(PlantTopics, AreLevelsOfBlockAndVariable) {
    auto const blocks = BlocksOf({{"AHU", {"T", "$state"}}, {"a/b", {"set", "+", ""}}});
    PlantTopics const topics("dorvel/pc-plant", blocks);
    EXPECT_EQ(topics.State(), "dorvel/pc-plant/$state");
    EXPECT_EQ(topics.BlockState(1), "dorvel/pc-plant/a%2Fb/$state");
    EXPECT_EQ(topics.Variable({0, 0}), "dorvel/pc-plant/AHU/T");
    EXPECT_EQ(topics.Variable({0, 1}), "dorvel/pc-plant/AHU/%24state");
    EXPECT_EQ(topics.Variable({1, 0}), "dorvel/pc-plant/a%2Fb/set");
    EXPECT_EQ(topics.Variable({1, 1}), "dorvel/pc-plant/a%2Fb/%2B");
    EXPECT_EQ(topics.Variable({1, 2}), "dorvel/pc-plant/a%2Fb/%");
    EXPECT_EQ(topics.Answer({0, 0}), "dorvel/pc-plant/AHU/T/set/state");
    EXPECT_EQ(topics.CommandFilter(), "dorvel/pc-plant/+/+/set");
}

TEST(PlantTopics, FindTheVariableOfACommand) {
    auto const blocks = BlocksOf({{"AHU", {"T", "set"}}, {"Room", {"T"}}});
    PlantTopics const topics("p", blocks);
    auto const place = topics.CommandPlace("p/Room/T/set");
    ASSERT_TRUE(place);
    EXPECT_EQ(place->block, 1U);
    EXPECT_EQ(place->variable, 0U);
    EXPECT_EQ(topics.CommandPlace("p/AHU/set/set")->variable, 1U);
    for (char const* topic :
         {"p/AHU/T", "p/AHU/T/set/state", "p/AHU/set", "p/AHU/U/set", "/set", "set", ""}) {
        EXPECT_FALSE(topics.CommandPlace(topic)) << topic;
    }
}

TEST(PlantTopics, KnowTheFormOfACommand) {
    auto const blocks = BlocksOf({{"AHU", {"T"}}});
    PlantTopics const topics("p/q", blocks);
    EXPECT_TRUE(topics.IsCommand("p/q/AHU/T/set"));
    EXPECT_TRUE(topics.IsCommand("p/q/x/y/set"));
    for (char const* topic : {"p/q/x/set", "p/q/x/y/z/set", "p/qx/y/z/set", "p/q/x/y/get", "p/q/+/y/set",
                              "p/q/x/\xFF/set", "p/q", ""}) {
        EXPECT_FALSE(topics.IsCommand(topic)) << topic;
    }
    EXPECT_FALSE(topics.IsCommand("p/q/x/" + std::string(600, 'y') + "/set"));
}

TEST(PlantTopics, AreDifferentForHostileNames) {
    auto const blocks = BlocksOf({{"a/b", {"c", std::string("\0", 1), "%00", "\xFF", "%FF"}},
                                  {"a", {"b/c", std::string(64 << 10, 'x'), std::string(70000, 'x')}},
                                  {"a%2Fb", {"c"}}});
    EXPECT_EQ(MistakeOf("p", blocks), "none");
}

TEST(PlantTopics, ThatAreTheSameAreAnError) {
    EXPECT_EQ(MistakeOf("p", BlocksOf({{"AHU", {}}, {"AHU", {}}})),
              R"(plant.lua:7: the block "AHU" has the same topic "p/AHU" as "AHU"; each needs its own: )"
              "give one of them a shorter name");
    EXPECT_EQ(MistakeOf("p", BlocksOf({{"AHU", {"T", "U", "T"}}})),
              R"(plant.lua:9: the variable "T" has the same topic "p/AHU/T" as "T"; each needs its own: )"
              "give one of them a shorter name");
    EXPECT_EQ(MistakeOf("a+b", {}),
              R"(the prefix of the topics: "a+b" has "+" in it; allowed is UTF-8 without +, # and control )"
              "characters");
}

}  // namespace
