#include "FaultCommand.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using simulator::CommandAnswer;
using simulator::Faults;

class FaultCommand : public ::testing::Test {
protected:
    std::string Run(std::string const& line) {
        CommandAnswer const answer = simulator::RunFaultCommand(line, {{"AHU-1", &ahu}, {"Room 2", &room}});
        return (answer.isMistake ? "! " : "") + answer.text;
    }

    Faults ahu, room;
};

TEST_F(FaultCommand, AFaultIsAddedAndListed) {
    EXPECT_EQ(Run("fault AHU-1 truncate octet=9 mend=false times=1 on=write"),
              "AHU-1: truncate octet=9 mend=false on=write times=1\n");
    ASSERT_EQ(ahu.List().size(), 1u);
    EXPECT_EQ(ahu.List()[0].octet, 9u);
    EXPECT_TRUE(room.List().empty());
    EXPECT_EQ(Run("faults"), "AHU-1: truncate octet=9 mend=false on=write times=1\nRoom 2: no faults\n");
}

TEST_F(FaultCommand, NamesWithSpacesAndAllDevices) {
    EXPECT_EQ(Run("  fault\t\"Room 2\"   silence duration=0.5 \r"), "Room 2: silence duration=0.5\n");
    EXPECT_EQ(Run("fault * delay seconds=1e-1"), "AHU-1: delay seconds=0.1\nRoom 2: delay seconds=0.1\n");
    EXPECT_EQ(room.List().size(), 2u);
    EXPECT_EQ(Run("clear \"Room 2\""), "Room 2: no faults\n");
    EXPECT_EQ(ahu.List().size(), 1u);
    EXPECT_EQ(Run("clear *"), "AHU-1: no faults\nRoom 2: no faults\n");
    EXPECT_TRUE(ahu.List().empty());
}

TEST_F(FaultCommand, WhatIsListedCanBeGivenAgain) {
    std::string const fault =
        "error class=2 code=40 on=write object=analog_value:7 chance=0.25 every=2 seed=3 "
        "after=1 duration=2 times=3";
    EXPECT_EQ(Run("fault AHU-1 " + fault), "AHU-1: " + fault + "\n");
}

TEST_F(FaultCommand, HelpStatesEveryKindWithItsFields) {
    std::string const help = Run("help");
    for (simulator::FaultRow const& row : simulator::FaultRows) {
        EXPECT_NE(help.find(std::string("\n  ") + row.name + " "), std::string::npos) << row.name;
    }
    EXPECT_NE(help.find("so many octets are sent (octet, mend)\n"), std::string::npos);
}

TEST_F(FaultCommand, NothingIsNothing) {
    EXPECT_EQ(Run(""), "");
    EXPECT_EQ(Run(" \t\r"), "");
}

TEST_F(FaultCommand, MistakesAreAnsweredAndNothingIsDone) {
    struct Row {
        char const* line;
        char const* message;
    };
    Row const rows[] = {
        {"foult AHU-1 silence", "unknown command \"foult\" (did you mean \"fault\"?)"},
        {"\"\"", "unknown command \"\""},
        {"fault", "fault: must be: fault NAME KIND [key=value ...]"},
        {"fault AHU-1", "fault: must be: fault NAME KIND [key=value ...]"},
        {"fault AHU-2 silence", "fault: unknown device \"AHU-2\" (did you mean \"AHU-1\"?)"},
        {"fault Room 2 silence", "fault: unknown device \"Room\""},
        {"fault AHU-1 silense", "fault: unknown fault \"silense\" (did you mean \"silence\"?)"},
        {"fault AHU-1 silence 5", "fault: must be key=value, not \"5\""},
        {"fault AHU-1 silence octet=5", "fault: silence: has no field \"octet\""},
        {"fault AHU-1 delay seconds=soon", "fault: delay: seconds: must be a number, not \"soon\""},
        {"fault AHU-1 delay seconds=nan", "fault: delay: seconds: must be from 0 to 1000000 seconds"},
        {"fault AHU-1 silence object=analog_input",
         "fault: object: must be an object like analog_input:1, not \"analog_input\""},
        {"fault AHU-1 silence object=analog_input:x",
         "fault: silence: object: must be a whole number from 0 up, not \"x\""},
        {"clear", "clear: must be: clear NAME"},
        {"clear x y", "clear: must be: clear NAME"},
        {"clear \"AHU-1", "a quotation mark is missing"},
        {"clear \x01\x1B", "clear: unknown device \"\\x01\\x1B\""},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(Run(row.line), std::string("! ") + row.message + "\n") << row.line;
        EXPECT_TRUE(ahu.List().empty()) << row.line;
    }
}

TEST_F(FaultCommand, ADeviceThatIsFullTakesNoMore) {
    for (std::size_t i = 0; i < Faults::Most; ++i) {
        Run("fault AHU-1 silence");
    }
    EXPECT_EQ(Run("fault AHU-1 silence"), "! fault: AHU-1 has 64 faults already\n");
}

TEST_F(FaultCommand, OneFullDeviceOfAllLeavesTheOthersAlone) {
    for (std::size_t i = 0; i < Faults::Most; ++i) {
        Run("fault \"Room 2\" silence");
    }
    EXPECT_EQ(Run("fault * silence"), "! fault: Room 2 has 64 faults already\n");
    EXPECT_TRUE(ahu.List().empty());
}

TEST_F(FaultCommand, WhatIsQuotedDoesNotSteerTheTerminal) {
    EXPECT_EQ(Run("fault AHU-1 delay \x1B[2J\x7F"), "! fault: must be key=value, not \"\\x1B[2J\\x7F\"\n");
    EXPECT_EQ(Run("\x07"), "! unknown command \"\\x07\"\n");
}

TEST_F(FaultCommand, RandomLinesAreAnsweredInWholeLines) {
    std::mt19937 random(20240601);
    std::string const words[] = {
        "fault", "clear",    "faults", "AHU-1",   "\"Room 2\"", "*",         "silence",        "delay",
        "loss",  "=",        "octet=", "times=1", "object=",    ":",         "analog_input:1", "\"",
        "1e400", "seconds=", "-1",     "\xFF",    "\x01",       "chance=0.5"};
    for (int i = 0; i < 10'000; ++i) {
        std::string line;
        for (unsigned count = random() % 8; count > 0; --count) {
            line += words[random() % std::size(words)] + (random() % 4 == 0 ? "" : " ");
        }
        std::string const answer = Run(line);
        EXPECT_TRUE(answer.empty() || answer.back() == '\n') << line;
        auto const steers = [](unsigned char c) { return (c < 0x20 && c != '\n') || c == 0x7F; };
        EXPECT_TRUE(std::none_of(answer.begin(), answer.end(), steers)) << line;
        ASSERT_LE(ahu.List().size(), Faults::Most);
    }
}
