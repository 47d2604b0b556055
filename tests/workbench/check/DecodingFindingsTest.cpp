#include <gtest/gtest.h>

#include "CheckedText.h"

using namespace test;
using namespace workbench;

namespace {

TEST(DecodingFindings, AGoodProjectHasNone) {
    EXPECT_EQ(Found(ProjectOf(Local, {Variable("A", "Float", "analog-input", 1),
                                      Variable("B", "String", "analog-input", 1, "description"),
                                      Variable("C", "Boolean", "binary-input", 1, "out-of-service"),
                                      Variable("D", "Float", "loop", 1, "setpoint"),
                                      Variable("E", "Float", "averaging", 1, "average-value")})),
              Lines());
}

TEST(DecodingFindings, APropertyThatTheDriverCannotDecodeTakesTheOthersOfItsObjectAlong) {
    std::string const text = ProjectOf(Local, {Variable("A", "Float", "analog-input", 1),
                                               Variable("B", "Float", "analog-input", 1, "low-limit"),
                                               Variable("C", "Float", "analog-input", 2)});
    EXPECT_EQ(Found(text), Lines{"not-decoded 3 B.B ObjectProperties"});
    EXPECT_EQ(MessageOf(FindingCode::NotDecoded, text),
              "the driver cannot decode low-limit of analog-input: it drops every answer of analog-input 1, "
              "without "
              "a fault, so neither this variable nor \"A\" ever gets a value");
}

TEST(DecodingFindings, ManyVariablesThatAreTakenAlongAreCounted) {
    std::vector<std::string> variables = {Variable("Limit", "Float", "loop", 1, "high-limit")};
    for (char const* const property : {"present-value", "setpoint", "units", "description", "reliability"}) {
        variables.push_back(Variable(property, "String", "loop", 1, property));
    }
    EXPECT_NE(MessageOf(FindingCode::NotDecoded, ProjectOf(Local, variables))
                  .find("nor \"present-value\", \"setpoint\", \"units\" and 2 more ever gets"),
              std::string::npos);
}

TEST(DecodingFindings, AWriteOfWhatCannotBeDecodedIsRefusedToo) {
    std::string const text =
        ProjectOf(Local, {Variable("A", "Float", "analog-value", 1, "deadband", ", Write=true")});
    EXPECT_EQ(Found(text), Lines{"not-decoded 2 B.A ObjectProperties"});
    EXPECT_NE(MessageOf(FindingCode::NotDecoded, text).find("never gets a value; its writes are refused"),
              std::string::npos);
}

TEST(DecodingFindings, NothingIsReadOfALightingOutput) {
    EXPECT_EQ(Found(ProjectOf(Local, {Variable("A", "Float", "lighting-output", 1),
                                      Variable("B", "Float", "lighting-output", 1, "tracking-value")})),
              (Lines{"lighting-output 2 B.A ObjectType", "lighting-output 3 B.B ObjectType"}));
}

TEST(DecodingFindings, AnAveragingHasNoPresentValue) {
    std::string const text = ProjectOf(Local, {Variable("A", "Float", "averaging", 1),
                                               Variable("B", "Float", "averaging", 1, "minimum-value")});
    EXPECT_EQ(Found(text), Lines{"averaging-present-value 2 B.A ObjectProperties"});
    EXPECT_NE(MessageOf(FindingCode::AveragingPresentValue, text).find("nor \"B\" ever gets a value"),
              std::string::npos);
}

TEST(DecodingFindings, FourPropertiesGoOutAsAnotherOne) {
    std::string const text =
        ProjectOf(Local, {Variable("A", "Float", "analog-input", 1, "blink-warn-enable"),
                          Variable("B", "Float", "analog-input", 2, "instantaneous-power"),
                          Variable("C", "Float", "analog-input", 3, "power"),
                          Variable("D", "Float", "analog-input", 4, "is-utc")});
    EXPECT_EQ(Found(text), (Lines{"sent-as-other-property 2 B.A ObjectProperties",
                                  "sent-as-other-property 3 B.B ObjectProperties",
                                  "sent-as-other-property 4 B.C ObjectProperties",
                                  "sent-as-other-property 5 B.D ObjectProperties"}));
    EXPECT_EQ(MessageOf(FindingCode::SentAsOtherProperty, text),
              "the driver requests units instead of blink-warn-enable, and the variable never gets a value");
}

TEST(DecodingFindings, WhatGoesOutAsAPropertyThatCanBeDecodedTakesNothingAlong) {
    EXPECT_EQ(
        MessageOf(FindingCode::SentAsOtherProperty,
                  ProjectOf(Local, {Variable("A", "Float", "analog-input", 1),
                                    Variable("B", "Float", "analog-input", 1, "power")})),
        "the driver requests property 128 instead of power, and it cannot decode that either: it drops every "
        "answer of analog-input 1, without a fault, so neither this variable nor \"A\" ever gets a value");
    EXPECT_EQ(MessageOf(FindingCode::SentAsOtherProperty,
                        ProjectOf(Local, {Variable("A", "Float", "analog-input", 1),
                                          Variable("B", "Float", "analog-input", 1, "blink-warn-enable")}))
                  .find("\"A\""),
              std::string::npos);
}

TEST(DecodingFindings, TheFeedbackOfABinaryOutputIsMisread) {
    EXPECT_EQ(Found(ProjectOf(Local, {Variable("A", "Float", "binary-output", 1, "feedback-value")})),
              Lines{"misread-feedback 2 B.A ObjectProperties"});
    EXPECT_EQ(Found(ProjectOf(Local, {Variable("A", "Boolean", "binary-output", 1)})), Lines());
}

}  // namespace
