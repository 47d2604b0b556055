// Findings about several variables, blocks and tasks.
#include <gtest/gtest.h>

#include "CheckedText.h"

using namespace test;
using namespace workbench;

namespace {

std::string BlockOf(std::string const& name, std::string const& address, std::string const& variables,
                    std::string const& fields = "") {
    return "BACnet.new{Name='" + name + "', Address='" + address + "', " + fields + " Vars={" + variables +
           "}}\n";
}

std::string In(std::string const& variable) {
    return "{" + variable + "}";
}

std::string const Temperature = In(Variable("T", "Float", "analog-input", 1));

TEST(Duplicates, OnlyTheFirstVariableOfAPropertyGetsTheValue) {
    std::string const text = ProjectOf(
        Local, {Variable("A", "Float", "analog-input", 1), Variable("B", "Double", "analog-input", 1),
                Variable("C", "String", "analog-input", 1, "description"),
                Variable("D", "Float", "analog-input", 2)});
    EXPECT_EQ(Found(text), Lines{"duplicate-property 3 B.B ObjectProperties"});
    EXPECT_EQ(
        MessageOf(FindingCode::DuplicateProperty, text),
        "variable \"A\" reads present-value of analog-input 1 already, and the driver gives the value to the "
        "first one only: this one never gets a value");
}

TEST(Duplicates, ASecondVariableCanBeWritten) {
    EXPECT_NE(
        MessageOf(
            FindingCode::DuplicateProperty,
            ProjectOf(Local, {Variable("A", "Float", "analog-value", 1),
                              Variable("B", "Float", "analog-value", 1, "present-value", ", Write=true")}))
            .find("can be written but never gets a value"),
        std::string::npos);
}

TEST(Duplicates, WhatIsNeverReadIsNotADuplicate) {
    EXPECT_EQ(Found(ProjectOf(Local, {Variable("A", "Float", "analog-input", 1, "bias"),
                                      Variable("B", "Float", "analog-input", 1, "bias")})),
              (Lines{"not-decoded 2 B.A ObjectProperties", "not-decoded 3 B.B ObjectProperties"}));
}

TEST(Duplicates, TwoBlocksPollOneObjectOfADevice) {
    std::string const more = In(Variable("U", "Float", "analog-input", 2));
    std::string const text =
        BlockOf("A", Device, Temperature + "," + more) +
        BlockOf("B", Device, more + "," + Temperature + "," + In(Variable("V", "Float", "loop", 1)));
    EXPECT_EQ(Found(text), Lines{"object-polled-twice 2 B.T ObjectNumber"});
    EXPECT_EQ(MessageOf(FindingCode::ObjectPolledTwice, text),
              "block \"A\" polls analog-input 1 and 1 more object of the device too: the device answers "
              "twice in each "
              "cycle, and a write in one block shows in the other one later");
}

TEST(Duplicates, BlocksOnTwoDevicesBehindARouterAreDifferent) {
    std::string const router = "192.168.1.1:47808";
    EXPECT_EQ(Found("Task{Name='a'} Task{Name='b'}\n" +
                    BlockOf("A", router, Temperature, "Task='a', NetworkNumber=5, MAC='1',") +
                    BlockOf("B", router, Temperature, "Task='b', NetworkNumber=5, MAC='2',")),
              Lines());
    EXPECT_EQ(Found("Task{Name='a'} Task{Name='b'}\n" +
                    BlockOf("A", router, Temperature, "Task='a', NetworkNumber=5, MAC='1',") +
                    BlockOf("B", router, Temperature, "Task='b', NetworkNumber=5, MAC='1',")),
              Lines{"object-polled-twice 3 B.T ObjectNumber"});
}

TEST(SimilarNames, DifferInCaseOrBlanksOnly) {
    EXPECT_EQ(Found(ProjectOf(Local, {Variable("Supply air", "Float", "analog-input", 1),
                                      Variable("supply  Air", "Float", "analog-input", 2),
                                      Variable("Supply air 2", "Float", "analog-input", 3)})),
              Lines{"similar-names 3 B.supply  Air Name"});
    EXPECT_EQ(Found(BlockOf("AHU", Device, Temperature) +
                    BlockOf("Ahu", Device, In(Variable("T", "Float", "analog-input", 2)))),
              Lines{"similar-names 2 Ahu Name"});
    EXPECT_EQ(Found("Task{Name='air'}\nTask{Name='Air'}\n" + BlockOf("B", Device, Temperature)),
              Lines{"similar-names 2  Name"});
}

TEST(TaskLoads, DevicesOfOneTaskDelayOneAnother) {
    std::string const text = BlockOf("A", Device, Temperature, "CountRepeat=2,") +
                             BlockOf("B", "192.168.1.21:47808", Temperature, "CountRepeat=5,");
    EXPECT_EQ(Found(text), Lines{"shared-task 2 B Task"});
    EXPECT_EQ(MessageOf(FindingCode::SharedTask, text),
              "task \"main\" polls 2 devices one after the other (\"A\" and \"B\"): one silent device delays "
              "the others "
              "by up to 5 s in every cycle");
    EXPECT_EQ(Found("Task{Name='a'} Task{Name='b'}\n" + BlockOf("A", Device, Temperature, "Task='a',") +
                    BlockOf("B", "192.168.1.21:47808", Temperature, "Task='b',")),
              Lines());
    EXPECT_EQ(Found(BlockOf("A", Device, Temperature) +
                    BlockOf("B", Device, In(Variable("T", "Float", "analog-input", 2)))),
              Lines());
}

std::string Objects(int count) {
    std::string variables;
    for (int i = 1; i <= count; ++i) {
        variables += In(Variable(("V" + std::to_string(i)).c_str(), "Float", "analog-input", i)) + ",";
    }
    return variables;
}

TEST(TaskLoads, APeriodIsShorterThanTheCycle) {
    std::string const text = "Task{Name='fast', Period=50}\n" + BlockOf("A", Device, Objects(60));
    EXPECT_EQ(Found(text), Lines{"short-period 1  Period"});
    EXPECT_EQ(
        MessageOf(FindingCode::ShortPeriod, text),
        "a cycle takes at least about 0.06 s (60 objects), and the period is 0.05 s: cycles begin late");
    EXPECT_EQ(Found("Task{Name='fast', Period=60}\n" + BlockOf("A", Device, Objects(60))), Lines());
}

TEST(TaskLoads, ARouterMakesTheCycleLonger) {
    EXPECT_EQ(Found("Task{Name='fast', Period=100}\n" +
                    BlockOf("A", Device, Objects(11), "NetworkNumber=5, MAC='10',")),
              Lines{"short-period 1  Period"});
}

TEST(TaskLoads, AWriteInEveryCycleTakesASecond) {
    std::string const variable =
        In(Variable("V", "Float", "analog-value", 1, "present-value", ", Write=true"));
    std::string const text = BlockOf("A", Device, variable, "WriteCondition='Always',");
    EXPECT_EQ(Found(text), Lines{"short-period 1  Period"});
    EXPECT_EQ(
        MessageOf(FindingCode::ShortPeriod, text),
        "a cycle takes at least about 1.001 s (1 object, 1 write of a second each in every cycle), and the "
        "period is 1 s: cycles begin late");
    EXPECT_EQ(Found(BlockOf("A", Device, variable)), Lines());
    EXPECT_EQ(Found("Task{Name='slow', Period=2000}\n" +
                    BlockOf("A", Device, variable, "WriteCondition='Always',")),
              Lines());
}

// With a mistake in a field, nothing is found that takes the default for it.

TEST(RefusedFields, LeaveOpenWhichDeviceABlockIsOn) {
    std::string const tasks = "Task{Name='a'} Task{Name='b'}\n";
    std::string const router = "192.168.1.1:47808";
    for (char const* const mistake : {"NetworkNumber=5, MAC='x'", "NetworkNumber=-1, MAC='2'"}) {
        EXPECT_EQ(Found(tasks + BlockOf("A", router, Temperature, "Task='a', NetworkNumber=5,") +
                        BlockOf("B", router, Temperature, std::string("Task='b', ") + mistake + ","))
                      .size(),
                  2U)
            << mistake;
    }
    EXPECT_EQ(Found(BlockOf("A", "nowhere", Temperature) + BlockOf("B", Device, Temperature) +
                    BlockOf("C", "192.168.1.21:47808", Temperature)),
              (Lines{"bad-address 1 A Address", "shared-task 3 C Task"}));
}

TEST(RefusedFields, ACountRepeatHasNoDelay) {
    std::string const text = BlockOf("A", Device, Temperature, "CountRepeat='2',") +
                             BlockOf("B", "192.168.1.21:47808", Temperature);
    EXPECT_EQ(Found(text), (Lines{"wrong-kind 1 A CountRepeat", "shared-task 2 B Task"}));
    EXPECT_EQ(MessageOf(FindingCode::SharedTask, text),
              "task \"main\" polls 2 devices one after the other (\"A\" and \"B\"): one silent device delays "
              "the others in every cycle");
}

TEST(RefusedFields, ATaskIsNotTheFirstOne) {
    EXPECT_EQ(Found("Task{Name='a', Period=50}\n" + BlockOf("A", Device, Objects(60), "Task=5,")),
              Lines{"wrong-kind 2 A Task"});
}

TEST(RefusedFields, APeriodIsNotASecond) {
    EXPECT_EQ(Found("Task{Name='a', Period='9 s'}\n" + BlockOf("A", Device, Objects(1001))),
              Lines{"wrong-kind 1  Period"});
    EXPECT_EQ(Found("Task{Name=5, Period=9000}\n" + BlockOf("A", Device, Objects(1001))),
              Lines{"wrong-kind 1  Name"});
}

TEST(RefusedFields, ANameIsLikeNoOther) {
    EXPECT_EQ(Found("BACnet.new{Name=' ', " + Local + ", Vars={" + Temperature + "}}\nBACnet.new{Name=5, " +
                    Local + ", Vars={" + In(Variable("T", "Float", "analog-input", 2)) + "}}"),
              Lines{"wrong-kind 2  Name"});
}

}  // namespace
