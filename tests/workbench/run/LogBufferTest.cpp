#include "LogBuffer.h"

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <sstream>
#include <thread>

#include "FakeEnvironment.h"
#include "Snapshots.h"
#include "Whereabouts.h"

using namespace test;
using namespace workbench;

namespace {

// A log at noon, by a clock that stands still.
class LogAtNoon : public testing::Test {
protected:
    LogAtNoon() {
        world.time = Noon;
        dorvel::SetEnvironment(&world);
    }
    ~LogAtNoon() override {
        Here() = {};
        dorvel::SetEnvironment(nullptr);
    }

    static std::string At(std::string const& text) { return "12:34:56 " + text; }

    FakeEnvironment world;
};

using Lines = std::vector<std::string>;

TEST(LogBuffer, AListenerGetsEveryLine) {
    std::vector<std::string> heard;
    LogBuffer log(nullptr);
    log.SetListener([&](std::string const& line) { heard.push_back(line); });
    log.Add("one\ntwo");
    log.SetListener({});
    log.Add("three");
    EXPECT_EQ(heard, (std::vector<std::string>{"one", "two"}));
}

TEST_F(LogAtNoon, ATextIsALineHoweverItEnds) {
    LogBuffer log(nullptr);
    log.Add("read start\n");
    log.Add("value : 5\n\r");
    log.Add("Incorrect IP address");
    log.Add("Error create device for poll\n");
    EXPECT_EQ(log.Lines(), (Lines{At("read start"), At("value : 5"), At("Incorrect IP address"),
                                  At("Error create device for poll")}));
}

TEST_F(LogAtNoon, ATextMayHaveSeveralLines) {
    LogBuffer log(nullptr);
    log.Add("one\r\ntwo\n\nthree");
    log.Add("");
    log.Add("\n");
    EXPECT_EQ(log.Lines(), (Lines{At("one"), At("two"), At("three")}));
}

TEST_F(LogAtNoon, EachLineGoesToTheStreamAsOneLine) {
    std::ostringstream stream;
    LogBuffer log(&stream);
    log.Add("a\x1B[2Jb");
    log.Add("c\n");
    EXPECT_EQ(stream.str(), "2024-03-15T12:34:56.789+01:00 a\\x1B[2Jb\n2024-03-15T12:34:56.789+01:00 c\n");
}

TEST_F(LogAtNoon, KeepsTheNewestLines) {
    LogBuffer log(nullptr);
    for (int i = 0; i < 1000; ++i) {
        log.Add(std::to_string(i));
    }
    EXPECT_EQ(log.Lines().size(), 50u);
    EXPECT_EQ(log.Lines().front(), At("950"));
    EXPECT_EQ(log.Lines().back(), At("999"));
}

TEST_F(LogAtNoon, KeptLinesAreBoundedInCountAndOctets) {
    LogBuffer log(nullptr);
    for (std::size_t i = 0; i < LogBuffer::MostLines + 10; ++i) {
        log.Add(std::to_string(i));
    }
    EXPECT_EQ(log.Count(), LogBuffer::MostLines + 10);
    EXPECT_EQ(log.Newest().size(), LogBuffer::MostLines);
    EXPECT_EQ(log.Newest().front().text, "10");
    EXPECT_EQ(log.Newest(2).front().text, "1008");
    std::string const text(5000, 'x');
    for (std::size_t i = 0; i < LogBuffer::MostLines; ++i) {
        log.Add(text);
    }
    EXPECT_EQ(log.Newest().size(), LogBuffer::MostOctets / 4096);
    EXPECT_EQ(log.Newest().back().text, text.substr(0, 4096));
}

TEST_F(LogAtNoon, LinesAreFoundByBlockAndVariable) {
    test::Plant plant;
    BlockSnapshot const& ahu = plant.AddBlock("AHU");
    plant.AddVariable("Supply air", OpcUaType_Float, {});
    plant.AddVariable("Exhaust air", OpcUaType_Float, {});
    BlockSnapshot const& boiler = plant.AddBlock("Boiler");
    plant.AddVariable("Supply air", OpcUaType_Float, {});
    VariableConfig const* const supply = ahu.variables[0].config;
    VariableConfig const* const exhaust = ahu.variables[1].config;
    VariableConfig const* const other = boiler.variables[0].config;
    LogBuffer log(nullptr);
    log.Add("none");
    Here() = {ahu.config, nullptr, nullptr};
    log.Add("block");
    Here() = {ahu.config, supply, nullptr};
    log.Add("object");
    Here() = {ahu.config, supply, supply};
    log.Add("variable");
    Here() = {ahu.config, exhaust, exhaust};
    log.Add("other variable");
    Here() = {boiler.config, other, other};
    log.Add("other block");

    auto const texts = [](std::vector<LogLine> const& lines) {
        Lines found;
        for (LogLine const& line : lines) {
            found.push_back(line.text);
        }
        return found;
    };
    EXPECT_EQ(texts(log.About("AHU", 10)), (Lines{"block", "object", "variable", "other variable"}));
    EXPECT_EQ(texts(log.About("AHU", *supply, 10)), (Lines{"object", "variable"}));
    EXPECT_EQ(texts(log.About("AHU", *supply, 1)), (Lines{"variable"}));
    EXPECT_EQ(texts(log.About("Chiller", 10)), Lines());
}

TEST(LogBuffer, ThreadsDoNotTearLines) {
    std::ostringstream stream;
    LogBuffer log(&stream);
    auto const write = [&log] {
        for (int i = 0; i < 200; ++i) {
            log.Add("a whole line\n");
        }
    };
    std::thread other(write);
    write();
    other.join();
    std::istringstream lines(stream.str());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        std::string const end = "00 a whole line";
        ASSERT_GT(line.size(), end.size());
        EXPECT_EQ(line.substr(line.size() - end.size()), end);
    }
    EXPECT_EQ(count, 400);
}

TEST_F(LogAtNoon, ALineNamesBlockObjectAndVariableWhereTheyAreKnown) {
    test::Plant plant;
    BlockSnapshot const& block = plant.AddBlock("AHU");
    plant.AddVariable("Supply air", OpcUaType_Float, {});
    std::ostringstream stream;
    LogBuffer log(&stream);
    Here().block = block.config;
    log.Add("one");
    Here().object = block.variables[0].config;
    log.Add("two\n");
    Here().variable = block.variables[0].config;
    log.Add("0-1 std::bad_cast\n");
    EXPECT_EQ(stream.str(),
              "2024-03-15T12:34:56.789+01:00 [AHU] one\n"
              "2024-03-15T12:34:56.789+01:00 [AHU, analog-input 1] two\n"
              "2024-03-15T12:34:56.789+01:00 [AHU, analog-input 1, Supply air] 0-1 std::bad_cast\n");
    EXPECT_EQ(log.Lines().back(), At("[AHU, analog-input 1, Supply air] 0-1 std::bad_cast"));
}

TEST_F(LogAtNoon, ALineIsAnObjectForPrograms) {
    test::Plant plant;
    BlockSnapshot const& block = plant.AddBlock("A \"B\"");
    plant.AddVariable("Supply air", OpcUaType_Float, {});
    std::ostringstream stream;
    LogBuffer log(&stream, LogFormat::Json);
    log.Add("no block\t\x1B\n");
    Here() = {block.config, block.variables[0].config, block.variables[0].config};
    log.Add("0-1 std::bad_cast\n");
    std::istringstream lines(stream.str());
    std::string line;
    rapidjson::Document document;
    std::getline(lines, line);
    ASSERT_FALSE(document.Parse(line.c_str()).HasParseError()) << line;
    EXPECT_STREQ(document["time"].GetString(), "2024-03-15T12:34:56.789+01:00");
    EXPECT_TRUE(document["block"].IsNull() && document["object"].IsNull() && document["variable"].IsNull());
    EXPECT_STREQ(document["text"].GetString(), "no block\t\x1B");
    std::getline(lines, line);
    ASSERT_FALSE(document.Parse(line.c_str()).HasParseError()) << line;
    EXPECT_STREQ(document["block"].GetString(), "A \"B\"");
    EXPECT_STREQ(document["object"].GetString(), "analog-input 1");
    EXPECT_STREQ(document["variable"].GetString(), "Supply air");
    EXPECT_STREQ(document["text"].GetString(), "0-1 std::bad_cast");
}

}  // namespace
