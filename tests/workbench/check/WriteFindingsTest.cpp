#include <gtest/gtest.h>

#include "CheckedText.h"

using namespace test;
using namespace workbench;

namespace {

Lines Written(char const* type, char const* object, char const* property = "present-value",
              std::string const& fields = Local) {
    return Found(ProjectOf(fields, {Variable("V", type, object, 1, property, ", Write=true")}));
}

TEST(WriteFindings, AWriteToThePropertyThatIsReadHasNone) {
    EXPECT_EQ(Written("Float", "analog-value"), Lines());
    EXPECT_EQ(Written("Boolean", "binary-output"), Lines());
    EXPECT_EQ(Written("UInt32", "multi-state-value"), Lines());
    EXPECT_EQ(Written("DateTime", "date-value"), Lines());
    EXPECT_EQ(Written("UInt32", "time-value"), Lines());
    EXPECT_EQ(Written("Float", "loop", "integral-constant"), Lines());
    EXPECT_EQ(Written("String", "schedule", "weekly-schedule"), Lines());
    EXPECT_EQ(Written("String", "schedule", "exception-schedule"), Lines());
}

TEST(WriteFindings, AWriteGoesToAnotherProperty) {
    Lines const other{"write-other-property 2 B.V Write"};
    EXPECT_EQ(Written("String", "analog-value", "description"), other);
    EXPECT_EQ(Written("Float", "loop", "setpoint"), other);
    EXPECT_EQ(Written("Boolean", "analog-input", "out-of-service"), other);
    EXPECT_EQ(MessageOf(FindingCode::WriteOtherProperty,
                        ProjectOf(Local, {Variable("V", "Float", "loop", 1, "setpoint", ", Write=true")})),
              "the driver reads setpoint and writes to present-value");
}

TEST(WriteFindings, AWriteIsAlwaysRefused) {
    Lines const refused{"write-refused 2 B.V Write"};
    EXPECT_EQ(Written("UInt32", "analog-value", "units"), refused);
    EXPECT_EQ(Written("UInt32", "analog-value", "reliability"), refused);
    EXPECT_EQ(Written("String", "octetstring-value"), refused);
    EXPECT_EQ(Written("String", "bitstring-value"), refused);
    EXPECT_EQ(Found(ProjectOf(Local, {Variable("V", "UInt32", "analog-value", 1, "units")})), Lines());
}

TEST(WriteFindings, ASignedValueFrom128OnArrivesNegative) {
    EXPECT_EQ(Written("Int32", "integer-value"),
              (Lines{"sign-not-read 2 B.V ObjectType", "write-sign 2 B.V Write"}));
    // An SByte ends at 127.
    EXPECT_EQ(Written("SByte", "integer-value"),
              (Lines{"may-not-convert 2 B.V ElementType", "sign-not-read 2 B.V ObjectType"}));
}

TEST(WriteFindings, ATextIsWrittenAsANumber) {
    EXPECT_EQ(Written("String", "analog-value"), Lines{"write-text 2 B.V Write"});
    EXPECT_EQ(Written("String", "binary-value"), Lines{"write-text 2 B.V Write"});
    EXPECT_EQ(Found(ProjectOf(Local, {Variable("V", "String", "analog-value", 1)})), Lines());
}

TEST(WriteFindings, APriorityHasNoMeaningForSchedulesAndConstants) {
    std::string const priority = Local + ", Priority=8";
    Lines const found{"priority-on-schedule 2 B.V Write"};
    EXPECT_EQ(Written("String", "schedule", "weekly-schedule", priority), found);
    EXPECT_EQ(Written("String", "schedule", "exception-schedule", priority), found);
    EXPECT_EQ(Written("Float", "loop", "derivative-constant", priority), found);
    EXPECT_EQ(Written("Float", "schedule", "present-value", priority), Lines());
    EXPECT_EQ(Written("Float", "analog-value", "present-value", priority), Lines());
    EXPECT_EQ(Written("String", "schedule", "weekly-schedule", Local + ", Priority=0"), Lines());
}

}  // namespace
