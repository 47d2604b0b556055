#include "TableFormat.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <random>

#include "Printable.h"
#include "Snapshots.h"
#include "TableLine.h"

using namespace test;
using namespace workbench;

namespace {

class Table : public testing::Test {
protected:
    void SetUp() override {
        std::setlocale(LC_CTYPE, "C.UTF-8");
        plant.AddBlock("AHU");
        plant.AddVariable("Supply", DataValueOf(OpcUaType_Float), Float(21.5f), OpcUa_Good,
                          Noon - 4 * Second / 10);
        plant.AddVariable("Name", OpcUaType_String, Text(""), 0x808C0000u, Noon - 300 * Second);
        BlockSnapshot& meter = plant.AddBlock("Meter");
        meter.fault = true;
        meter.errorText = "No connection";
        plant.AddVariable("Energy", OpcUaType_UInt32, {}, OpcUa_BadNoData, 0);
        plant.AddBlock("Later", 0);
    }

    std::vector<std::string> Lines(Screen const& screen, std::vector<std::string> const& log = {}) const {
        return FormatTable(plant.All(), log, screen, Noon);
    }

    Plant plant;
};

using Text = std::vector<std::string>;

TEST_F(Table, ShowsAllColumnsOnAWideScreen) {
    Text const expected = {
        // clang-format off
        "  Variable  Object          Property       Value  Type              Quality         Time        Age",
        "AHU  OK  192.168.1.20:47808  cycle 3",
        "  Supply    analog-input 1  present-value   21.5  DataValue(Float)  Good            12:34:56  0.4 s",
        "  Name      analog-input 2  present-value     \"\"  String            Sensor failure  12:29:56  5 min",
        "Meter  FAULT No connection  192.168.1.20:47808  cycle 3",
        "  Energy    analog-input 1  present-value      -  UInt32            No data         -             -",
        "Later  waiting  192.168.1.20:47808  cycle 0",
        // clang-format on
    };
    EXPECT_EQ(Lines({120, 24, false}), expected);
}

TEST_F(Table, ShowsWhyABlockIsInItsStateAndHowLongItsCyclesTake) {
    Plant other;
    BlockSnapshot& block = other.AddBlock("AHU");
    other.AddVariable("Sun", OpcUaType_Float, Float(0));
    other.AddVariable("Supply", OpcUaType_Float, Float(21.5f));
    block.variables[0].suspect = "device: unknown-object";
    block.times = {12, 4000, 3000, 20600000, 1};
    block.causes = {{CauseKind::OtherStation, "", "10.0.0.9:1 answers in place of 10.0.0.5:1", 2, Noon},
                    {CauseKind::PropertyError, "analog-input 1", "analog-input 1: x", 1, Noon}};
    Text const expected = {
        // clang-format off
        "  Variable  Object          Property       Value  Type   Quality  Suspect         Time        Age",
        "AHU  OK  192.168.1.20:47808  cycle 3  overruns 1  0.4 ms (median 0.3 ms, max 2.06 s)",
        "  > 10.0.0.9:1 answers in place of 10.0.0.5:1",
        "  > analog-input 1: x",
        "  Sun       analog-input 1  present-value      0  Float  Good     unknown-object  12:34:56  0.0 s",
        "  Supply    analog-input 2  present-value   21.5  Float  Good                     12:34:56  0.0 s",
        // clang-format on
    };
    EXPECT_EQ(FormatTable(other.All(), {}, {120, 24, false}, Noon), expected);
    EXPECT_EQ(FormatTable(other.All(), {}, {80, 24, false}, Noon)[1],
              "AHU  OK  192.168.1.20:47808  cycle 3  overruns 1  0.4 ms");
}

TEST_F(Table, CountsTheCausesThatAreNotShown) {
    Plant other;
    BlockSnapshot& block = other.AddBlock("AHU");
    for (char const* const text : {"a", "b", "c", "d"}) {
        block.causes.push_back({CauseKind::PropertyError, text, text, 1, Noon});
    }
    auto const lines = FormatTable(other.All(), {}, {80, 24, false}, Noon);
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[3], "  > b");
    EXPECT_EQ(lines[4], "  > and 2 more causes");
}

TEST_F(Table, HasAColumnForWritesWhenAVariableCanBeWritten) {
    Plant other;
    BlockSnapshot& block = other.AddBlock("AHU");
    for (int i = 0; i < 3; ++i) {
        other.AddVariable("S", OpcUaType_Float, Float(21.5f));
    }
    VariableConfig writable = *block.variables[1].config;
    writable.write = true;
    block.variables[1].config = block.variables[2].config = &writable;
    block.variables[2].write = {WriteStage::Refused, Float(99), "because"};
    Text const lines = FormatTable({block}, {}, {120, 24, false}, Noon);
    auto const end = [&](std::size_t line) { return lines[line].substr(lines[line].find("0.0 s") + 5); };
    EXPECT_NE(lines[0].find("  Age  Write     "), std::string::npos) << lines[0];
    EXPECT_EQ(end(2), "            ");
    EXPECT_EQ(end(3), "  -         ");
    EXPECT_EQ(end(4), "  99 refused");
    Text const coloured = FormatTable({block}, {}, {120, 24, true}, Noon);
    EXPECT_NE(coloured[4].find("\x1B[31m99 refused\x1B[0m"), std::string::npos) << coloured[4];
}

TEST_F(Table, LeavesOutTheTypeFirst) {
    EXPECT_EQ(Lines({84, 24, false})[2],
              "  Supply    analog-input 1  present-value   21.5  Good            12:34:56  0.4 s");
}

TEST_F(Table, ShrinksColumnsOnANarrowScreen) {
    Text const expected = {
        // clang-format off
        "  Variable  Object          Property  Value  Quality     Age",
        "AHU  OK  192.168.1.20:47808  cycle 3",
        "  Supply    analog-input 1  present…   21.5  Good      0.4 s",
        "  Name      analog-input 2  present…     \"\"  Sensor …  5 min",
        "Meter  FAULT No connection  192.168.1.20:47808  cycle 3",
        "  Energy    analog-input 1  present…      -  No data       -",
        "Later  waiting  192.168.1.20:47808  cycle 0",
        // clang-format on
    };
    EXPECT_EQ(Lines({60, 24, false}), expected);
}

TEST_F(Table, NumbersOfObjectsAreKeptLongest) {
    EXPECT_EQ(Lines({50, 24, false})[2], "  Supply    analog-… 1  pre…   21.5  Good    0.4 s");
    EXPECT_EQ(Lines({12, 24, false})[2], "  Supply  a…");
}

TEST_F(Table, CountsTheLinesThatDoNotFit) {
    Text const lines = Lines({120, 5, false});
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[2].substr(0, 8), "  Supply");
    EXPECT_EQ(lines[3], "... 4 more");
}

TEST_F(Table, TheNewestLogLinesAreBelow) {
    Text const lines = Lines({120, 24, false}, {"one", "two\x1B", "three"});
    ASSERT_EQ(lines.size(), 11u);
    EXPECT_EQ(lines[7], "Log");
    EXPECT_EQ(lines[8], "one");
    EXPECT_EQ(lines[9], "two\\x1B");
    EXPECT_EQ(lines[10], "three");
}

TEST_F(Table, TheLogTakesAThirdOfTheScreenAtMost) {
    Text const log(50, "line");
    EXPECT_EQ(Lines({120, 9, false}, log).size(), 8u);
    EXPECT_EQ(Lines({120, 9, false}, log)[3], "... 4 more");
    EXPECT_EQ(Lines({120, 9, false}, log)[4], "Log");
}

TEST_F(Table, ColoursSurroundTextsAndChangeNothingElse) {
    Screen const plain{100, 24, false};
    Screen const coloured{100, 24, true};
    Text lines = Lines(coloured);
    EXPECT_EQ(lines[1], "\x1B[1mAHU\x1B[0m  \x1B[32mOK\x1B[0m  192.168.1.20:47808  cycle 3");
    EXPECT_NE(lines[3].find("\x1B[31mSensor failure\x1B[0m"), std::string::npos);
    EXPECT_NE(lines[5].find("\x1B[2mNo data"), std::string::npos);
    for (std::string& line : lines) {
        for (std::size_t start = line.find('\x1B'); start != std::string::npos; start = line.find('\x1B')) {
            line.erase(start, line.find('m', start) - start + 1);
        }
    }
    EXPECT_EQ(lines, Lines(plain));
}

TEST_F(Table, FitsEveryScreen) {
    std::mt19937 random(6);
    for (int i = 0; i < 10000; ++i) {
        Screen const screen{random() % 130, random() % 30, false};
        Text const lines = Lines(screen, Text(random() % 9, "a line of the log"));
        EXPECT_LE(lines.size(), std::max<std::size_t>(screen.height, 2) - 1);
        EXPECT_GE(lines.size(), 1u);
        for (std::string const& line : lines) {
            EXPECT_LE(tools::DisplayWidth(line), screen.width);
        }
    }
}

TEST(TableLine, CutsWhatDoesNotFit) {
    TableLine line(6, false);
    line.Add("abcd");
    line.Add("efgh");
    line.Add("x");
    EXPECT_EQ(line.Text(), "abcde…");
}

TEST(Snapshot, ABlockIsWaitingInFaultOrOk) {
    Plant plant;
    BlockSnapshot& block = plant.AddBlock("B", 0);
    EXPECT_EQ(StateText(block), "waiting");
    EXPECT_FALSE(IsFault(block));
    block.cycle = 1;
    EXPECT_EQ(StateText(block), "FAULT not polled");
    EXPECT_TRUE(IsFault(block));
    block.isReported = true;
    EXPECT_EQ(StateText(block), "OK");
    block.fault = true;
    block.errorText = "No connection";
    EXPECT_EQ(StateText(block), "FAULT No connection");
}

std::string ValueCell(std::string const& unit, std::size_t width) {
    Plant one;
    one.AddBlock("AHU");
    one.AddVariable("Supply air temperature", DataValueOf(OpcUaType_Float), Float(21.5f)).unit = unit;
    std::string const line = FormatTable(one.All(), {}, {width, 24, false}, Noon).at(2);
    EXPECT_LE(tools::DisplayWidth(line), width);
    return line;
}

TEST_F(Table, UnitsAreShownWithTheirValues) {
    EXPECT_NE(ValueCell("\xC2\xB0"
                        "C",
                        120)
                  .find("  21.5 \xC2\xB0"
                        "C  "),
              std::string::npos);
}

TEST_F(Table, AWideUnitIsCutOnANarrowScreenAndTheNumberStays) {
    std::string const squareKilometres = "\xE5\xB9\xB3\xE6\x96\xB9\xE5\x85\xAC\xE9\x87\x8C";
    EXPECT_NE(ValueCell(squareKilometres, 120).find("21.5 " + squareKilometres), std::string::npos);
    std::string const narrow = ValueCell(squareKilometres, 60);
    EXPECT_NE(narrow.find("21.5"), std::string::npos) << narrow;
    EXPECT_EQ(narrow.find(squareKilometres), std::string::npos) << narrow;
    EXPECT_NE(narrow.find("\xE2\x80\xA6"), std::string::npos) << narrow;
}

TEST_F(Table, AUnitTakesTheColourOfItsValueAlone) {
    Plant one;
    one.AddBlock("AHU").cycle = 1;
    one.AddVariable("T", DataValueOf(OpcUaType_Float), Float(21.5f)).unit = "eggs";
    std::vector<BlockSnapshot> blocks = one.All();
    blocks[0].variables[0].suspect = "device: unknown-object";
    std::string const line = FormatTable(blocks, {}, {120, 24, true}, Noon).at(2);
    EXPECT_NE(line.find("\x1B[31m21.5 eggs\x1B[0m"), std::string::npos) << line;
}

}  // namespace
