#include "OutletRows.h"

#include <gtest/gtest.h>

#include "KeyDecoder.h"
#include "PlantScreen.h"
#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

using Lines = std::vector<std::string>;

std::vector<OutletState> Outlets() {
    return {{"mqtt", OutletHealth::Waiting, "broker.example refuses the connection", Noon - 12 * Second, {}},
            {"recording", OutletHealth::Good, "plant.sqlite", Noon - 300 * Second, {}}};
}

TEST(OutletRows, EachOutletHasALine) {
    EXPECT_EQ(OutletRows(Outlets(), {80, 24, false}, Noon),
              (Lines{"mqtt       waiting   broker.example refuses the connection  12 s",
                     "recording  good      plant.sqlite  5 min"}));
}

TEST(OutletRows, ALongTextIsCutBeforeItsAge) {
    EXPECT_EQ(OutletRows(Outlets(), {40, 24, false}, Noon).front(),
              "mqtt       waiting   broker.examp\xE2\x80\xA6  12 s");
}

TEST(OutletRows, ALowScreenHasOneLineForAll) {
    EXPECT_EQ(OutletRows(Outlets(), {80, 8, false}, Noon), (Lines{"mqtt waiting  recording good  "}));
}

TEST(OutletRows, HealthHasAColour) {
    EXPECT_NE(OutletRows(Outlets(), {80, 24, true}, Noon)[0].find("\x1B[33mwaiting"), std::string::npos);
    EXPECT_NE(OutletRows(Outlets(), {80, 24, true}, Noon)[1].find("\x1B[32mgood"), std::string::npos);
}

TEST(OutletRows, ControlCharactersDoNotReachTheTerminal) {
    std::vector<OutletState> outlets = Outlets();
    outlets.front().text = "\x1B[2J\n";
    for (std::string const& line : OutletRows(outlets, {80, 24, false}, Noon)) {
        EXPECT_EQ(line.find_first_of("\x1B\n"), std::string::npos);
    }
}

TEST(OutletRows, AreBelowTheTableAndAboveTheLog) {
    Plant plant;
    plant.AddBlock("AHU");
    plant.AddVariable("T", DataValueOf(OpcUaType_Float), Float(1));
    PlantScreen screen({});
    screen.Update({plant.Shared(), {}, Outlets()}, {"a line"}, Noon);
    Lines const lines = screen.Draw({80, 20, false}).lines;
    ASSERT_EQ(lines.size(), 20U);
    EXPECT_EQ(lines[14].substr(0, 4), "mqtt");
    EXPECT_EQ(lines[15].substr(0, 9), "recording");
    EXPECT_EQ(lines[16], "Log");
    EXPECT_EQ(lines[17], "a line");
}

TEST(OutletRows, TheLeastScreenHasTheTableToo) {
    Plant plant;
    plant.AddBlock("AHU");
    plant.AddVariable("T", DataValueOf(OpcUaType_Float), Float(1));
    PlantScreen screen({});
    screen.Update({plant.Shared(), {}, Outlets()}, {"one", "two", "three"}, Noon);
    Lines const lines = screen.Draw({LeastWidth, LeastHeight, false}).lines;
    ASSERT_EQ(lines.size(), LeastHeight);
    EXPECT_NE(lines[1].find("AHU"), std::string::npos);
}

TEST(OutletRows, FitOnEachScreenWithCandidatesAndALog) {
    Plant plant;
    plant.AddBlock("AHU");
    plant.AddVariable("T", DataValueOf(OpcUaType_Float), Float(1));
    std::vector<std::string> names;
    for (int i = 0; i < 100; ++i) {
        names.push_back("AHU." + std::string(30, 'x') + std::to_string(i));
    }
    for (std::size_t const count : {3U, 50U}) {
        PlantScreen screen(names);
        screen.Update({plant.Shared(), {}, std::vector<OutletState>(count, Outlets().front())},
                      Lines(10, "x"), Noon);
        KeyDecoder decoder;
        for (Key const& key : decoder.Feed("s\t")) {
            screen.Handle(key);
        }
        for (std::size_t height = LeastHeight; height < 60; ++height) {
            EXPECT_EQ(screen.Draw({80, height, false}).lines.size(), height);
        }
    }
}

}  // namespace
