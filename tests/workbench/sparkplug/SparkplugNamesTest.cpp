#include "SparkplugNames.h"

#include <gtest/gtest.h>

#include "Printable.h"

using namespace workbench;

namespace {

std::deque<BlockConfig> Blocks(std::vector<std::pair<std::string, std::vector<std::string>>> const& texts) {
    std::deque<BlockConfig> blocks;
    for (auto const& [block, variables] : texts) {
        blocks.emplace_back();
        blocks.back().name = block;
        for (std::string const& name : variables) {
            blocks.back().variables.emplace_back();
            blocks.back().variables.back().name = name;
        }
    }
    return blocks;
}

TEST(SparkplugNames, MakeTopicsOfEscapedNames) {
    auto const blocks = Blocks({{"AHU", {}}, {"Room 1/a+b#", {}}, {"", {}}});
    SparkplugNames const names("the group", "a/b", blocks);
    EXPECT_EQ(names.NodeTopic("NBIRTH"), "spBv1.0/the group/NBIRTH/a%2Fb");
    EXPECT_EQ(names.DeviceTopic("DDATA", 0), "spBv1.0/the group/DDATA/a%2Fb/AHU");
    EXPECT_EQ(names.DeviceTopic("DDATA", 1), "spBv1.0/the group/DDATA/a%2Fb/Room 1%2Fa%2Bb%23");
    EXPECT_EQ(names.DeviceTopic("DDATA", 2), "spBv1.0/the group/DDATA/a%2Fb/%");
    EXPECT_EQ(names.DevicesTopic("DCMD"), "spBv1.0/the group/DCMD/a%2Fb/+");
}

TEST(SparkplugNames, FindTheBlockOfATopic) {
    auto const blocks = Blocks({{"AHU", {}}, {"Rooms", {}}});
    SparkplugNames const names("g", "n", blocks);
    EXPECT_EQ(names.BlockOfTopic("DCMD", "spBv1.0/g/DCMD/n/Rooms"), 1U);
    EXPECT_FALSE(names.BlockOfTopic("DCMD", "spBv1.0/g/DCMD/n/Room"));
    EXPECT_FALSE(names.BlockOfTopic("DCMD", "spBv1.0/g/DCMD/n"));
    EXPECT_FALSE(names.BlockOfTopic("DCMD", "spBv1.0/g/DDATA/n/Rooms"));
    EXPECT_FALSE(names.BlockOfTopic("DCMD", ""));
}

TEST(SparkplugNames, GiveEachVariableAnAliasOfItsOwn) {
    auto const blocks = Blocks({{"A", {"x", "y"}}, {"B", {"x"}}});
    SparkplugNames const names("g", "n", blocks);
    EXPECT_EQ(names.Alias({0, 0}), 1U);
    EXPECT_EQ(names.Alias({0, 1}), 2U);
    EXPECT_EQ(names.Alias({1, 0}), 3U);
    auto const second = names.Find(1, 3, "");
    ASSERT_TRUE(second);
    EXPECT_EQ(second->block, 1U);
    EXPECT_EQ(second->variable, 0U);
    EXPECT_EQ(names.Find(0, std::nullopt, "y")->variable, 1U);
    EXPECT_EQ(names.Find(0, 2, "y")->variable, 1U);
}

TEST(SparkplugNames, DoNotFindAVariableOfAnotherBlockOrTwoAtOnce) {
    auto const blocks = Blocks({{"A", {"x", "y"}}, {"B", {"z"}}});
    SparkplugNames const names("g", "n", blocks);
    EXPECT_FALSE(names.Find(0, 3, ""));
    EXPECT_FALSE(names.Find(1, 2, ""));
    EXPECT_FALSE(names.Find(0, 0, ""));
    EXPECT_FALSE(names.Find(0, 18446744073709551615ULL, ""));
    EXPECT_FALSE(names.Find(0, std::nullopt, "z"));
    EXPECT_FALSE(names.Find(0, std::nullopt, ""));
    EXPECT_FALSE(names.Find(0, 1, "y"));
}

TEST(SparkplugNames, OfMetricsAreFolders) {
    EXPECT_EQ(MetricName("Supply/Temperature 1"), "Supply/Temperature 1");
    EXPECT_EQ(MetricName("a//b/"), "a/%/b/%");
    EXPECT_EQ(MetricName(""), "%");
    EXPECT_EQ(MetricName("50 %"), "50 %25");
    EXPECT_EQ(MetricName(std::string("a\0b\n\xFF", 5)), "a%00b%0A%FF");
}

TEST(SparkplugNames, OfMetricsAreBoundedAndDiffer) {
    std::string const longName(65536, 'x');
    EXPECT_LE(MetricName(longName).size(), LongestMetricName);
    EXPECT_NE(MetricName(longName), MetricName(longName + "x"));
    std::string folders;
    for (int i = 0; i < 20000; ++i) {
        folders += "/\xC3";
    }
    std::string const name = MetricName(folders);
    EXPECT_LE(name.size(), LongestMetricName);
    EXPECT_EQ(tools::ValidUtf8(name), name);
    EXPECT_NE(name, MetricName(folders + "/"));
}

}  // namespace
