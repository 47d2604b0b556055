#include "PlantScreen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <fstream>
#include <random>
#include <sstream>

#include "KeyDecoder.h"
#include "KeyTable.h"
#include "Printable.h"
#include "SetRequest.h"
#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

class OnScreen : public testing::Test {
protected:
    void SetUp() override {
        std::setlocale(LC_CTYPE, "C.UTF-8");
        plant.AddBlock("AHU");
        Add("Supply air", 21.5f).unit = "degrees-celsius";
        Add("Setpoint", 20).write = true;
        plant.AddBlock("Meter");
        for (int i = 0; i < 50; ++i) {
            Add("Counter " + std::to_string(i), static_cast<float>(i));
        }
        Show();
        screen.Draw(size);
    }

    VariableConfig& Add(std::string const& name, float value) {
        return plant.AddVariable(name, DataValueOf(OpcUaType_Float), Float(value));
    }
    void Show() { screen.Update({plant.Shared(), writes}, log, Noon); }
    // Keys as a terminal sends them; returns what was entered.
    std::string Type(std::string const& octets) {
        std::string entered;
        std::vector<Key> keys = decoder.Feed(octets);
        for (Key const& key : decoder.Flush()) {
            keys.push_back(key);
        }
        for (Key const& key : keys) {
            entered += screen.Handle(key);
            Show();
            screen.Draw(size);
        }
        return entered;
    }
    std::vector<std::string> Lines() { return screen.Draw(size).lines; }
    std::string Line(std::size_t index) { return Lines().at(index); }
    // The line that is selected, without its mark and the blanks before its text.
    std::string Selected() {
        for (std::string const& line : Lines()) {
            if (line.front() == '>') {
                std::string const text = line.substr(line.find_first_not_of("> "));
                return text.substr(0, text.find("  "));
            }
        }
        return "nothing";
    }
    bool Has(std::string const& words) {
        std::vector<std::string> const lines = Lines();
        return std::any_of(lines.begin(), lines.end(),
                           [&](std::string const& line) { return line.find(words) != std::string::npos; });
    }
    std::string Status() { return Line(size.height - 2); }
    std::string Message() { return Line(size.height - 1); }

    Plant plant;
    WriteList writes;
    std::vector<std::string> log;
    PlantScreen screen{{"AHU.Setpoint", "AHU.Setback"}};
    KeyDecoder decoder;
    Screen size{90, 20, false};
};

// A schedule, whose text nobody reads.
class ScheduleOnScreen : public OnScreen {
protected:
    void SetUp() override {
        OnScreen::SetUp();
        plant.AddBlock("Zone");
        week = &plant.AddVariable("Programme", DataValueOf(OpcUaType_String),
                                  test::Text("06000000,4,9,21.500000,20000000,4,9,17.000000;;;;;;;"));
        week->objectType = ObjectTypes().FindName("schedule");
        week->property = Properties().FindName("weekly-schedule");
        week->unit = "degrees-celsius";
        week->write = true;
        Show();
    }

    VariableConfig* week = nullptr;
};

constexpr char Programme[] = "Mon 06:00 21.5 °C, 20:00 17 °C";

TEST_F(OnScreen, TheTableHasItsColumnsBlocksAndVariables) {
    EXPECT_EQ(Line(0), "    Variable      Value  Quality  Write    Age  Object           Property     ");
    EXPECT_EQ(Line(1), ">\xE2\x96\xBE AHU  OK  192.168.1.20:47808  cycle 3");
    EXPECT_EQ(Line(2),
              "    Supply air  21.5 \xC2\xB0"
              "C  Good            0.0 s  analog-input 1   present-value");
    EXPECT_EQ(Line(3), "    Setpoint         20  Good     -      0.0 s  analog-input 2   present-value");
    EXPECT_EQ(Status(), "52 variables");
    EXPECT_EQ(Message(), "? keys  / filter  Enter details  l log  s set");
    EXPECT_EQ(Lines().size(), 20u);
}

TEST_F(OnScreen, KeysMoveTheSelectionAndTheTableFollows) {
    Type("jj");
    EXPECT_EQ(Selected(), "Setpoint");
    Type("k\x1B[B\x1B[B");
    EXPECT_NE(Selected().find("Meter"), std::string::npos);
    Type("\x1B[F");
    EXPECT_EQ(Selected(), "Counter 49");
    EXPECT_NE(Line(1).find("Meter  OK"), std::string::npos) << "the headline of the block stays visible";
    Type("\x1B[5~");
    EXPECT_EQ(Selected(), "Counter 33");
    Type("\x1B[6~");
    EXPECT_EQ(Selected(), "Counter 49");
    Type("g");
    EXPECT_NE(Selected().find("AHU"), std::string::npos);
    EXPECT_NE(Line(1).find("AHU"), std::string::npos);
    Type(" G\x1B[H\x1B[<65;1;1M");
    EXPECT_NE(Selected().find("Meter"), std::string::npos);
}

TEST_F(OnScreen, AClickSelectsAndTheNextOneOpens) {
    Type("\x1B[<0;5;4M");
    EXPECT_EQ(Selected(), "Setpoint");
    Type("\x1B[<0;5;4M");
    EXPECT_EQ(Line(0), "AHU.Setpoint");
    Type("q\x1B[<0;5;1M\x1B[<0;5;20M\x1B[<0;5;900M");
    EXPECT_EQ(Selected(), "Setpoint");
}

TEST_F(OnScreen, TheFilterActsWhileItIsTyped) {
    Type("/count");
    EXPECT_EQ(Status(), "Filter: count  50 of 52 variables");
    EXPECT_EQ(screen.Draw(size).cursor->column, 13u);
    EXPECT_EQ(screen.Draw(size).cursor->line, 18u);
    Type(
        "er 4\x7F"
        "3\r");
    EXPECT_EQ(Status(), "19 of 52 variables  filter \"counter 3\"")
        << "14 by their names, 5 by their objects";
    Type("\x1B");
    EXPECT_EQ(Status(), "52 variables");
    Type("/xyz");
    EXPECT_TRUE(Has("No variable is chosen"));
    Type("\x1B");
    EXPECT_EQ(Status(), "52 variables");
    EXPECT_FALSE(screen.Draw(size).cursor);
}

TEST_F(OnScreen, TogglesAreShownWhileTheyAreOn) {
    Type("b");
    EXPECT_EQ(Status(), "0 of 52 variables  only bad");
    Type("bw");
    EXPECT_EQ(Status(), "1 of 52 variables  only writable");
    Type("c");
    EXPECT_EQ(Status(), "0 of 52 variables  only changed, only writable");
    Type("a");
    EXPECT_EQ(Status(), "52 variables");
}

TEST_F(OnScreen, BlocksAreFolded) {
    Type("\x1B[D");
    EXPECT_EQ(Line(1), ">\xE2\x96\xB8 AHU  OK  2 variables  192.168.1.20:47808  cycle 3");
    EXPECT_NE(Line(2).find("Meter"), std::string::npos);
    Type("\x1B[C");
    EXPECT_NE(Line(2).find("Supply"), std::string::npos);
    Type("\r");
    EXPECT_NE(Line(2).find("Meter"), std::string::npos);
    Type("\rf");
    EXPECT_NE(Line(2).find("Meter"), std::string::npos);
    EXPECT_EQ(Line(3), "");
}

TEST_F(OnScreen, TheDetailsHaveAllThatIsKnown) {
    plant.AddBlock("Chiller");
    VariableConfig& mode = plant.AddVariable("Mode", OpcUaType_UInt32, Float(2));
    mode.objectType = ObjectTypes().FindName("multi-state-value");
    mode.stateTexts = {"off", "automatic"};
    mode.description = "of the plant";
    Show();
    Type("G\r");
    for (char const* const words : {"Chiller.Mode", "Good, 0x00000000", "2024-03-15T12:34:56.789+01:00",
                                    "cannot be set", "multi-state-value 1", "present-value", "UInt32",
                                    "1 off, 2 automatic", "of the plant", "192.168.1.20:47808"}) {
        EXPECT_TRUE(Has(words)) << words;
    }
    EXPECT_EQ(screen.Detailed()->second, &mode);
    Type("q");
    EXPECT_FALSE(screen.Detailed());
    EXPECT_TRUE(Has("Variable"));
}

TEST_F(OnScreen, TheDetailsHaveTrendEventsLogAndWhatTheDeviceSays) {
    size = {80, 50, false};
    Type("j\r");
    EXPECT_FALSE(Has("Trend"));
    VariableFacts facts;
    facts.trend = {{Noon - 10 * Second, 20.1, QualityKind::Good}, {Noon, 22.5, QualityKind::Good}};
    facts.trendFrom = Noon - 10 * Second;
    facts.trendTo = Noon;
    facts.events.push_back({1, Noon, Hour, EventKind::Refused, nullptr, nullptr, "99 refused (because)"});
    facts.log.push_back({Noon, Hour, "AHU", "", "", "a line\x1B of the log"});
    facts.inspection = std::make_shared<Inspection>(
        Inspection{InspectionState::Done,
                   "",
                   Noon - Second,
                   {{"description", "in the\x1B duct"}, {"priority-array", "1 null\n8 21"}}});
    screen.SetFacts(facts);
    for (char const* const words : {"Trend", "▁",
                                    "20.1 \xC2\xB0"
                                    "C to 22.5 \xC2\xB0"
                                    "C",
                                    "12:34:56      99 refused (because)", "a line\\x1B of the log",
                                    "1.0 s ago", "in the\\x1B duct", "8 21"}) {
        EXPECT_TRUE(Has(words)) << words;
    }
    facts.inspection =
        std::make_shared<Inspection>(Inspection{InspectionState::Failed, "it does not answer", 0, {}});
    screen.SetFacts(facts);
    EXPECT_TRUE(Has("failed        it does not answer"));
}

TEST_F(OnScreen, AVariableThatCanBeSetIsFilledIn) {
    Type("s");
    EXPECT_EQ(Message(), "Block.Variable = value: ");
    Type("\x1Bjjs");
    EXPECT_EQ(Message(), "Block.Variable = value: AHU.Setpoint = ");
    EXPECT_EQ(screen.Draw(size).cursor->column, 39u);
    EXPECT_EQ(Type("21\r"), "AHU.Setpoint = 21");
    EXPECT_EQ(Type("\r:19\r"), "AHU.Setpoint = 19") << "also in the details";
}

TEST_F(OnScreen, TabShowsTheCandidates) {
    Type("sAHU\t");
    EXPECT_EQ(Message(), "Block.Variable = value: AHU.Set");
    EXPECT_EQ(Line(17), "  AHU.Setback   AHU.Setpoint  ");
}

TEST_F(OnScreen, ALongListOfCandidatesIsCounted) {
    std::vector<std::string> names;
    for (int i = 0; i < 1000; ++i) {
        names.push_back("AHU." + std::string(30, 'x') + std::to_string(i));
    }
    PlantScreen other(names);
    other.Update({plant.Shared(), {}}, {}, Noon);
    for (Key const& key : decoder.Feed("s\t")) {
        other.Handle(key);
    }
    std::vector<std::string> const lines = other.Draw(size).lines;
    EXPECT_EQ(lines[17], "  ... 990 more; type some letters");
    EXPECT_EQ(lines.size(), 20u);
}

TEST_F(OnScreen, ACandidateThatFitsIsNotCut) {
    PlantScreen other({"AHU." + std::string(83, 'x'), "AHU.y"});
    other.Update({plant.Shared(), {}}, {}, Noon);
    for (Key const& key : decoder.Feed("s\t")) {
        other.Handle(key);
    }
    EXPECT_EQ(other.Draw(size).lines[16], "  AHU." + std::string(83, 'x') + " ");
}

TEST_F(OnScreen, TheStateOfABlockIsVisibleBesideALongName) {
    plant.AddBlock(std::string(100, 'b'));
    Show();
    Type("G");
    EXPECT_NE(Line(17).find("b\xE2\x80\xA6  OK"), std::string::npos) << Line(17);
}

TEST_F(OnScreen, TheWheelMovesWhileAFilterIsTyped) {
    Type("/Counter\x1B[<65;1;1M");
    EXPECT_EQ(Selected(), "Counter 2");
}

TEST_F(OnScreen, TheLogShowsWholeLines) {
    log.push_back("first " + std::string(200, 'x') + " last");
    Show();
    Type("l");
    EXPECT_TRUE(Has(" last"));
    EXPECT_FALSE(Has("\xE2\x80\xA6"));
}

TEST_F(OnScreen, AnEmptyLogHasNoLines) {
    Type("l");
    EXPECT_EQ(Status(), "Log, no lines");
}

TEST_F(OnScreen, AMistakeAndTheStateOfAWriteStayBelow) {
    screen.SetAnswerLine({"AHU.x", {}, "no\x1B such thing"});
    EXPECT_EQ(Message(), "no\\x1B such thing");
    BlockSnapshot const block = plant.All().front();
    VariableConfig const& variable = *block.variables[1].config;
    writes[&variable] = {WriteStage::Refused, Float(99), "because"};
    screen.SetAnswerLine({"AHU.Setpoint", Float(99), "", &variable});
    Show();
    EXPECT_EQ(Message(), "AHU.Setpoint = 99 refused (because)");
    EXPECT_NE(Line(3).find("99 refused"), std::string::npos);
}

TEST_F(OnScreen, TheLogIsBelowTheTableAndCanBeScrolled) {
    for (int i = 0; i < 100; ++i) {
        log.push_back("line " + std::to_string(i) + "\x1B");
    }
    Show();
    EXPECT_EQ(Line(12), "Log");
    EXPECT_EQ(Line(17), "line 99\\x1B");
    Type("l");
    EXPECT_EQ(Line(17), "line 99\\x1B");
    EXPECT_EQ(Status(), "Log, lines 83 to 100 of 100");
    log.emplace_back("new");
    Show();
    EXPECT_EQ(Line(17), "new");
    Type("k");
    log.emplace_back("newer");
    Show();
    EXPECT_EQ(Line(17), "line 99\\x1B") << "what is read stays";
    Type("\x1B[F");
    EXPECT_EQ(Line(17), "newer");
    Type("\x1B");
    EXPECT_EQ(Line(16), "new");
}

TEST_F(OnScreen, TheHelpHasAllKeys) {
    size.height = 60;
    Type("?");
    for (KeyHelp const& key : KeyTable()) {
        EXPECT_TRUE(Has(std::string("  ") + key.keys)) << key.keys;
    }
}

TEST_F(OnScreen, TheKeysOfTheDocumentAreThoseOfTheHelp) {
    std::ifstream file(WORKBENCH_DOCUMENT);
    std::stringstream document;
    document << file.rdbuf();
    for (KeyHelp const& key : KeyTable()) {
        std::string const row = std::string("\n| ") + key.keys + " | " + key.action + " |\n";
        EXPECT_NE(document.str().find(row), std::string::npos) << row;
    }
}

TEST_F(OnScreen, AScreenThatIsTooSmallSaysSo) {
    size = {39, 24, false};
    EXPECT_EQ(Lines(), (std::vector<std::string>{"Window 39x24; the table needs 40x8"}));
    size = {5, 5, false};
    EXPECT_EQ(Lines().size(), 1u);
    size = {60, 7, false};
    EXPECT_EQ(Lines(), (std::vector<std::string>{"Window 60x7; the table needs 40x8"}));
    size = {40, 8, false};
    EXPECT_EQ(Lines().size(), 8u);
}

// Every key in any order on any screen: no line is too long, and there are never too many.
TEST_F(OnScreen, FitsEveryScreen) {
    BlockSnapshot& third = plant.AddBlock(std::string(70, 'b'));
    third.causes.push_back({CauseKind::PropertyError, "a", std::string(300, 'c'), 1, Noon});
    plant.AddVariable(std::string(100, 'n'), OpcUaType_String, Text(std::string(1000, 'v'))).write = true;
    log.assign(20, std::string(300, 'l'));
    static char const* const keys[] = {"j",
                                       "k",
                                       " ",
                                       "g",
                                       "G",
                                       "\x1B[A",
                                       "\x1B[B",
                                       "\x1B[5~",
                                       "\x1B[6~",
                                       "\x1B[D",
                                       "\x1B[C",
                                       "\r",
                                       "f",
                                       "/",
                                       "b",
                                       "c",
                                       "w",
                                       "a",
                                       "s",
                                       "l",
                                       "?",
                                       "q",
                                       "\x1B",
                                       "\t",
                                       "x",
                                       "1",
                                       "\x1B[<0;3;6M",
                                       "\x1B[<64;3;6M",
                                       "\x7F"};
    std::mt19937 random(15);
    for (int i = 0; i < 5000; ++i) {
        size = {random() % 250, random() % 80, random() % 2 == 0};
        Type(keys[random() % std::size(keys)]);
        ScreenFrame const frame = screen.Draw(size);
        EXPECT_LE(frame.lines.size(), std::max<std::size_t>(size.height, 1));
        for (std::string line : frame.lines) {
            for (std::size_t start = line.find('\x1B'); start != std::string::npos;
                 start = line.find('\x1B')) {
                line.erase(start, line.find('m', start) - start + 1);
            }
            ASSERT_LE(tools::DisplayWidth(line), size.width) << line;
        }
        if (frame.cursor) {
            EXPECT_LT(frame.cursor->column, size.width);
            EXPECT_LT(frame.cursor->line, size.height);
        }
    }
}

TEST_F(ScheduleOnScreen, IsThereAsPeopleTypeIt) {
    Type("\x1B[F");
    EXPECT_TRUE(Has(Programme));
    EXPECT_FALSE(Has("06000000"));
    Type("\r");
    EXPECT_TRUE(Has(Programme));
    EXPECT_TRUE(Has("06000000,4,9,21.500000")) << "the details have the text of the driver too";
}

TEST_F(ScheduleOnScreen, IsFoundByWhatIsVisible) {
    Type("/20:00");
    EXPECT_TRUE(Has("1 of 53 variables")) << Status();
}

TEST_F(ScheduleOnScreen, IsCutBeforeTheStateOfItsWrite) {
    SetAnswer answer;
    answer.target = "Zone.Programme";
    answer.variable = week;
    screen.SetAnswerLine(answer);
    writes[week] = {WriteStage::Pending,
                    test::Text("06000000,4,9,21.500000;07000000,4,9,21.500000;08000000,4,9,21.500000;"
                               "09000000,4,9,17.000000;;;;"),
                    {}};
    Show();
    EXPECT_EQ(Message().substr(0, 32), "Zone.Programme = Mon 06:00 21.5 ");
    EXPECT_NE(Message().find("… pending"), std::string::npos) << Message();
}

}  // namespace
