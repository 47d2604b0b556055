// The check takes a time that grows with the project, not with its square.
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

#include "CheckedText.h"

using namespace test;

namespace {

using MakeProject = std::string (*)(int points);

std::string Point(int number, char const* property = "present-value") {
    return "{" + Variable(("V" + std::to_string(number)).c_str(), "Float", "analog-input", number, property) +
           "},\n";
}

std::string BlockHead(int number) {
    return "BACnet.new{Name='B" + std::to_string(number) + "', Address='10.0." +
           std::to_string(number / 250) + "." + std::to_string(number % 250 + 1) + ":47808', Task='T" +
           std::to_string(number) + "', ";
}

std::string OneBlock(int points) {
    std::string text = BlockHead(1) + "Vars={\n";
    for (int i = 0; i < points; ++i) {
        text += Point(i);
    }
    return "Task{Name='T1', Period=60000}\n" + text + "}}";
}

// Ten points to a block.
std::string ManyBlocks(int points) {
    std::string text;
    for (int i = 0; i < points / 10; ++i) {
        text += "Task{Name='T" + std::to_string(i) + "'}\n" + BlockHead(i) + "Vars={\n";
        for (int k = 0; k < 10; ++k) {
            text += Point(k);
        }
        text += "}}\n";
    }
    return text;
}

std::string OneBlockOfMistakes(int points) {
    std::string text = BlockHead(1) + "Vars={\n";
    for (int i = 0; i < points; ++i) {
        text += i % 2 == 0 ? Point(i, "bias") : Point(i, "biass");
    }
    return "Task{Name='T1'}\n" + text + "}}";
}

// All blocks have the list that is made before them.
std::string OneListForAll(int points) {
    std::string text = "local v = {\n";
    for (int k = 0; k < 10; ++k) {
        text += Point(k, "bias");
    }
    text += "}\nTask{Name='T'}\n";
    for (int i = 0; i < points / 10; ++i) {
        text += "BACnet.new{Name='B" + std::to_string(i) + "', Task='T', Address='10.0.0.1:47808', Vars=v}\n";
    }
    return text;
}

std::string EveryPointIsSet(int points) {
    std::string text = OneBlock(points) + "\n";
    for (int i = 0; i < points; ++i) {
        text += "Set('B1.V" + std::to_string(i) + "', 1)\n";
    }
    std::size_t position = 0;
    while ((position = text.find("'present-value'", position)) != std::string::npos) {
        text.insert(position + 15, ", Write=true");
        position += 15;
    }
    return text;
}

// Processor time of the fastest of three checks, in clock ticks.
std::clock_t TimeOf(std::string const& text) {
    std::clock_t fastest = 0;
    for (int i = 0; i < 3; ++i) {
        std::clock_t const begin = std::clock();
        tools::LuaLimits limits;
        limits.time = std::chrono::seconds(60);
        EXPECT_NE(workbench::CheckProjectText("p.lua", text, {}, limits).blocks, 0u);
        std::clock_t const time = std::clock() - begin;
        fastest = i == 0 ? time : std::min(fastest, time);
    }
    return std::max<std::clock_t>(fastest, 1);
}

class CheckTime : public testing::TestWithParam<MakeProject> {};

// Ten times the points take about ten times the time; if it grew with their square, a hundred times.
TEST_P(CheckTime, GrowsWithThePoints) {
    MakeProject const make = GetParam();
    EXPECT_LT(TimeOf(make(3000)) / TimeOf(make(300)), 40);
}

INSTANTIATE_TEST_SUITE_P(Projects, CheckTime,
                         testing::Values(OneBlock, ManyBlocks, OneBlockOfMistakes, OneListForAll,
                                         EveryPointIsSet));

}  // namespace
