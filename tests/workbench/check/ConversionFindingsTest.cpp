#include <gtest/gtest.h>

#include "CheckedText.h"

using namespace test;
using namespace workbench;

namespace {

Lines Converted(char const* type, char const* object, char const* property = "present-value") {
    return Found(ProjectOf(Local, {Variable("V", type, object, 1, property)}));
}

Lines const Never{"never-converts 2 B.V ElementType"};
Lines const Sometimes{"may-not-convert 2 B.V ElementType"};
Lines const Changed{"loses-information 2 B.V ElementType"};

TEST(ConversionFindings, TypesThatHoldEveryValueHaveNone) {
    for (auto const& [type, object, property] : std::vector<std::array<char const*, 3>>{
             {"Float", "analog-input", "present-value"},
             {"Double", "analog-input", "present-value"},
             {"String", "analog-input", "present-value"},
             {"Double", "large-analog-value", "present-value"},
             {"Boolean", "binary-value", "present-value"},
             {"Byte", "binary-value", "present-value"},
             {"Int16", "multi-state-value", "present-value"},
             {"UInt32", "accumulator", "present-value"},
             {"UInt32", "positive-integer-value", "present-value"},
             {"UInt64", "multi-state-value", "present-value"},
             {"UInt16", "analog-input", "units"},
             {"Boolean", "binary-input", "polarity"},
             {"Byte", "analog-input", "status-flags"},
             {"UInt64", "analog-input", "status-flags"},
             {"String", "octetstring-value", "present-value"},
             {"String", "bitstring-value", "present-value"},
             {"DateTime", "date-value", "present-value"},
             {"String", "datetime-value", "present-value"},
             {"UInt32", "time-value", "present-value"},
             {"String", "schedule", "weekly-schedule"},
             {"String", "schedule", "exception-schedule"},
         }) {
        EXPECT_EQ(Converted(type, object, property), Lines()) << type << " " << object << " " << property;
    }
}

TEST(ConversionFindings, WhatTheHostCannotConvertNeverHasAValue) {
    EXPECT_EQ(Converted("DateTime", "analog-input"), Never);
    EXPECT_EQ(Converted("DateTime", "accumulator"), Never);
    EXPECT_EQ(Converted("Double", "date-value"), Never);
    EXPECT_EQ(Converted("Boolean", "datetime-value"), Never);
    EXPECT_EQ(Converted("ByteString", "binary-input"), Never);
    EXPECT_EQ(Converted("Float", "schedule", "weekly-schedule"), Never);
    EXPECT_EQ(Converted("Boolean", "octetstring-value"), Never);
}

TEST(ConversionFindings, SomeValuesDoNotFit) {
    EXPECT_EQ(Converted("Boolean", "analog-input", "description"), Sometimes);
    EXPECT_EQ(Converted("DateTime", "analog-input", "description"), Sometimes);
    EXPECT_EQ(Converted("Byte", "accumulator"), Sometimes);
    EXPECT_EQ(Converted("Int32", "positive-integer-value"), Sometimes);
    EXPECT_EQ(Converted("Byte", "multi-state-input"), Sometimes);
    EXPECT_EQ(Converted("Byte", "analog-input", "units"), Sometimes);
    EXPECT_EQ(Converted("Int16", "time-value"), Sometimes);
    EXPECT_EQ(Converted("UInt16", "analog-input"), Sometimes);
    EXPECT_EQ(Converted("Int32", "bitstring-value"), Sometimes);
    EXPECT_EQ(Converted("Int32", "large-analog-value"), Sometimes);
    EXPECT_EQ(
        MessageOf(FindingCode::MayNotConvert, ProjectOf(Local, {Variable("V", "Byte", "accumulator", 1)})),
        "not every value of present-value of accumulator 1 can be converted to Byte: with 256 the variable "
        "is "
        "empty");
}

TEST(ConversionFindings, SomeValuesBecomeAnotherOne) {
    EXPECT_EQ(Converted("Boolean", "analog-input", "event-state"), Changed);
    EXPECT_EQ(Converted("Boolean", "multi-state-value"), Changed);
    EXPECT_EQ(Converted("Boolean", "analog-input", "status-flags"), Changed);
    EXPECT_EQ(Converted("Int32", "analog-input"), Changed);
    EXPECT_EQ(Converted("Float", "large-analog-value"), Changed);
    EXPECT_EQ(MessageOf(FindingCode::LosesInformation,
                        ProjectOf(Local, {Variable("V", "Int32", "analog-input", 1)})),
              "present-value of analog-input 1 does not fit into Int32 unchanged: 21.5 becomes 22");
    EXPECT_EQ(MessageOf(FindingCode::LosesInformation,
                        ProjectOf(Local, {Variable("V", "Boolean", "multi-state-value", 1)})),
              "present-value of multi-state-value 1 does not fit into Boolean unchanged: 2 becomes true");
}

TEST(ConversionFindings, ACountOf64BitsIsCut) {
    Lines const cut{"count-cut 2 B.V ElementType"};
    EXPECT_EQ(Converted("UInt64", "accumulator"), cut);
    EXPECT_EQ(Converted("Int64", "positive-integer-value"), cut);
}

TEST(ConversionFindings, ACountInATypeThatShowsNoLimitIsCutToo) {
    Lines const cut{"count-cut 2 B.V ElementType"};
    for (char const* const type : {"Double", "String"}) {
        EXPECT_EQ(Converted(type, "accumulator"), cut) << type;
        EXPECT_EQ(Converted(type, "positive-integer-value"), cut) << type;
    }
    EXPECT_EQ(Converted("Float", "accumulator"),
              (Lines{"loses-information 2 B.V ElementType", "count-cut 2 B.V ElementType"}));
    EXPECT_EQ(
        MessageOf(FindingCode::CountCut, ProjectOf(Local, {Variable("V", "Double", "accumulator", 1)})),
        "the driver delivers the low 32 bits of present-value of accumulator 1: from 4294967296 on the value "
        "is another one, and Double does not show it");
}

TEST(ConversionFindings, ASignedCountIsCutAtItsOwnLimit) {
    EXPECT_NE(MessageOf(FindingCode::CountCut, ProjectOf(Local, {Variable("V", "Int64", "integer-value", 1)}))
                  .find("from 2147483648 on"),
              std::string::npos);
    EXPECT_NE(MessageOf(FindingCode::CountCut, ProjectOf(Local, {Variable("V", "Int64", "accumulator", 1)}))
                  .find("from 4294967296 on"),
              std::string::npos);
}

TEST(ConversionFindings, TheSignOfAnIntegerValueIsNotRead) {
    EXPECT_EQ(Converted("Int32", "integer-value"), Lines{"sign-not-read 2 B.V ObjectType"});
    EXPECT_EQ(Converted("UInt32", "integer-value"),
              (Lines{"may-not-convert 2 B.V ElementType", "sign-not-read 2 B.V ObjectType"}));
}

TEST(ConversionFindings, OnlyADataValueHasAQuality) {
    std::string const plain =
        "Name='V', Type='Float', ObjectType='analog-input', ObjectNumber=1, "
        "ObjectProperties='present-value'";
    EXPECT_EQ(Found(ProjectOf(Local, {plain})), Lines{"no-quality 2 B.V Type"});
    EXPECT_EQ(Converted("Float", "analog-input"), Lines());
}

TEST(ConversionFindings, WhatIsNeverReadIsNotConverted) {
    EXPECT_EQ(Converted("DateTime", "analog-input", "high-limit"),
              Lines{"not-decoded 2 B.V ObjectProperties"});
    EXPECT_EQ(Converted("DateTime", "lighting-output"), Lines{"lighting-output 2 B.V ObjectType"});
}

}  // namespace
