#include <gtest/gtest.h>

#include "CheckedText.h"

using namespace test;
using namespace workbench;

namespace {

Lines With(std::string const& fields) {
    return Found(ProjectOf(fields, {Variable("V", "Float", "analog-input", 1)}));
}

TEST(FieldFindings, FieldsOfAGoodBlockHaveNone) {
    EXPECT_EQ(With("Address='192.168.1.20:47808'"), Lines());
    EXPECT_EQ(With("Address='192.168.1.20:47808', MAC='192.168.1.20'"), Lines());
    EXPECT_EQ(With("Address='192.168.1.20:47808', MAC='255.255.255.255:47808'"), Lines());
    EXPECT_EQ(With("Address='192.168.1.1:47808', NetworkNumber=5, MAC='10:20', CountRepeat=60"), Lines());
}

TEST(FieldFindings, AMacWithoutANetworkDiffersFromTheAddress) {
    Lines const found{"mac-differs 1 B MAC"};
    EXPECT_EQ(With("Address='192.168.1.20:47808', MAC='192.168.1.21:47808'"), found);
    EXPECT_EQ(With("Address='192.168.1.20:47809', MAC='192.168.1.20'"), found);
    EXPECT_EQ(With("Address='192.168.1.20:47808', MAC='5'"), found);
}

TEST(FieldFindings, ANetworkNeedsAMac) {
    EXPECT_EQ(With("Address='192.168.1.1:47808', NetworkNumber=5"), Lines{"mac-missing 1 B NetworkNumber"});
    EXPECT_EQ(With("Address='192.168.1.1:47808', NetworkNumber=5, MAC='255.255.255.255'"),
              Lines{"mac-missing 1 B MAC"});
}

TEST(FieldFindings, ABroadcastIsReported) {
    EXPECT_EQ(With("Address='192.168.1.1:47808', NetworkNumber=5, MAC=''"),
              Lines{"broadcast-address 1 B MAC"});
    EXPECT_EQ(With("Address='192.168.1.1:47808', NetworkNumber=65535, MAC='10'"),
              Lines{"broadcast-address 1 B NetworkNumber"});
}

TEST(FieldFindings, FieldsWithoutEffectAreReported) {
    EXPECT_EQ(With(Local + ", Timeout=1000"), Lines{"field-without-effect 1 B Timeout"});
    EXPECT_EQ(With(Local + ", AddressNumber=1"), Lines{"field-without-effect 1 B AddressNumber"});
}

TEST(FieldFindings, ASilentDeviceHoldsItsTaskForMoreThanAMinute) {
    std::string const text =
        ProjectOf(Local + ", CountRepeat=61", {Variable("V", "Float", "analog-input", 1)});
    EXPECT_EQ(Found(text), Lines{"long-silence 1 B CountRepeat"});
    EXPECT_EQ(MessageOf(FindingCode::LongSilence, text),
              "a silent device holds the task of the block for 61 s in every cycle");
    EXPECT_EQ(With(Local + ", CountRepeat=60"), Lines());
    EXPECT_EQ(With(Local + ", CountRepeat=0"), Lines{"out-of-range 1 B CountRepeat"});
}

TEST(FieldFindings, ARefusedMacIsNotTheDefault) {
    std::string const remote = "Address='192.168.1.1:47808', NetworkNumber=5, ";
    EXPECT_EQ(With(remote + "MAC='0A.:14:1E'"), Lines{"bad-address 1 B MAC"});
    EXPECT_EQ(With(remote + "MAC=10"), Lines{"wrong-kind 1 B MAC"});
    EXPECT_EQ(With(remote + "Mac='10'"), Lines{"unknown-field 1 B Mac"});
    EXPECT_EQ(With(remote + "Colour='10'"),
              (Lines{"unknown-field 1 B Colour", "mac-missing 1 B NetworkNumber"}));
}

TEST(FieldFindings, ARefusedNetworkNumberIsNotTheLocalNetwork) {
    std::string const remote = "Address='192.168.1.1:47808', MAC='10', ";
    EXPECT_EQ(With(remote + "NetworkNumber=70000"), Lines{"out-of-range 1 B NetworkNumber"});
    EXPECT_EQ(With(remote + "Networknumber=5"), Lines{"unknown-field 1 B Networknumber"});
}

TEST(FieldFindings, EveryFieldHasItsLine) {
    EXPECT_EQ(
        Found(
            "BACnet.new{\n  Name='B',\n  Address='192.168.1.20:47808',\n  MAC='5',\n  Timeout=5,\n  Vars={{" +
            Variable("V", "Float", "analog-input", 1) + "}}}"),
        (Lines{"mac-differs 4 B MAC", "field-without-effect 5 B Timeout"}));
}

}  // namespace
