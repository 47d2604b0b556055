#include "ScheduleVariable.h"

#include <gtest/gtest.h>

#include "ProjectError.h"
#include "SetRequest.h"
#include "ValueText.h"

using namespace workbench;

namespace {

VariableConfig Variable(char const* name, char const* object, char const* property, _OpcUa_BuiltInType type) {
    VariableConfig variable;
    variable.name = name;
    variable.type = {OpcUaType_DataValue, type};
    variable.objectType = ObjectTypes().FindName(object);
    variable.property = Properties().FindName(property);
    variable.objectNumber = 1;
    variable.write = true;
    return variable;
}

// A block with the present value of a schedule, its two texts, and another text.
std::deque<BlockConfig> Blocks(_OpcUa_BuiltInType type, std::string const& unit,
                               std::vector<std::string> const& states = {}) {
    std::deque<BlockConfig> blocks(1);
    blocks[0].name = "AHU";
    VariableConfig value = Variable("Now", "schedule", "present-value", type);
    value.unit = unit;
    value.stateTexts = states;
    blocks[0].variables = {value, Variable("Week", "schedule", "weekly-schedule", OpcUaType_String),
                           Variable("Days", "schedule", "exception-schedule", OpcUaType_String),
                           Variable("Note", "schedule", "description", OpcUaType_String)};
    return blocks;
}

std::deque<BlockConfig> Setpoint() {
    return Blocks(OpcUaType_Float, "degrees-celsius");
}

// The text that is set, or the mistake.
std::string Set(std::deque<BlockConfig> const& blocks, std::string const& assignment) {
    try {
        return ValueText(ReadAssignment(blocks, assignment).value, 0);
    } catch (ProjectError const& mistake) {
        return mistake.what();
    }
}

}  // namespace

TEST(ScheduleVariable, IsOnOneOfTheTwoSchedulesOfAScheduleObject) {
    BlockConfig const block = Setpoint()[0];
    EXPECT_EQ(ScheduleKindOf(block.variables[0]), ScheduleKind::None);
    EXPECT_EQ(ScheduleKindOf(block.variables[1]), ScheduleKind::Weekly);
    EXPECT_EQ(ScheduleKindOf(block.variables[2]), ScheduleKind::Exception);
    EXPECT_EQ(ScheduleKindOf(block.variables[3]), ScheduleKind::None);
}

TEST(ScheduleVariable, HasTheUnitAndTheStatesOfThePresentValueOfItsObject) {
    BlockConfig block = Setpoint()[0];
    EXPECT_EQ(ScheduleNamesOf(block, block.variables[1]).unit, "°C");
    EXPECT_FALSE(ScheduleNamesOf(block, block.variables[1]).type);
    block.variables[1].objectNumber = 2;
    EXPECT_EQ(ScheduleNamesOf(block, block.variables[1]).unit, "");
    BlockConfig const states = Blocks(OpcUaType_Boolean, "", {"off", "on"})[0];
    EXPECT_EQ(ScheduleNamesOf(states, states.variables[1]).stateTexts.size(), 2u);
    EXPECT_EQ(ScheduleNamesOf(states, states.variables[1]).type, ScheduleValueType::Boolean);
}

TEST(ScheduleVariable, IsSetAsPeopleType) {
    EXPECT_EQ(
        Set(Setpoint(), "AHU.Week = Mon-Tue 06:00 21.5 °C, 20:00 17 °C; Sun 08:00 19"),
        "06000000,4,9,21.500000,20000000,4,9,17.000000;06000000,4,9,21.500000,20000000,4,9,17.000000;;;;;"
        "08000000,4,9,19.000000;");
    EXPECT_EQ(Set(Setpoint(), "AHU.Days = 2026-12-25 (priority 10) 00:00 16 °C"),
              "0,525122026,10,00000000,4,9,16.000000;");
    EXPECT_EQ(Set(Blocks(OpcUaType_Boolean, "", {"off", "on"}), "AHU.Week = Mon 06:00 on, 20:00 off"),
              "06000000,1,1,1,20000000,1,1,0;;;;;;;");
}

TEST(ScheduleVariable, IsSetWithATextOfTheDriverAsItIs) {
    for (std::string const text : {"06000000,4,9,21.500000;;;;;;;", ";;;;;;;", "06000000,2,2,5d;;;;;;;"}) {
        EXPECT_EQ(Set(Setpoint(), "AHU.Week = " + text), text);
    }
    std::string const days = "0,525122026,10,00000000,4,9,16.000000;";
    EXPECT_EQ(Set(Setpoint(), "AHU.Days = " + days), days);
    EXPECT_EQ(Set(Setpoint(), "AHU.Note = Mon 06:00"), "Mon 06:00");
}

TEST(ScheduleVariable, RefusesATextThatIsNoSchedule) {
    EXPECT_EQ(Set(Setpoint(), "AHU.Week = Mon 06:00 21.5 °F"),
              "\"AHU.Week\": \"°F\" is not the unit; allowed is \"°C\", or the number alone; example: "
              "Mon-Fri 06:00 "
              "21.5, 20:00 17; Sat 08:00 19");
    EXPECT_EQ(Set(Setpoint(), "AHU.Days = 25.12.2026 00:00 16"),
              "\"AHU.Days\": \"25.12.2026\" is not a period; expected a date such as 2026-12-25 or 25 "
              "December 2026, "
              "two dates with \"to\" between, days such as last Friday in December, or calendar 7; example: "
              "2026-12-25 (priority 10) 00:00 16; last Friday in December 12:00 null");
}

TEST(ScheduleVariable, RefusesValuesOfWhichTheDeviceWouldReceiveOthers) {
    EXPECT_EQ(Set(Setpoint(), "AHU.Week = Mon 06:00 unsigned 2"),
              "\"AHU.Week\": Monday 06:00: the driver writes only 0 or 1 as Unsigned: the device receives 1 "
              "instead of "
              "2");
    EXPECT_EQ(Set(Setpoint(), "AHU.Week = Mon 06:00 0.0000001"),
              "\"AHU.Week\": Monday 06:00: the driver writes six decimals: the device receives 0");
    EXPECT_EQ(Set(Setpoint(), "AHU.Days = none"),
              "\"AHU.Days\": the driver cannot write an exception schedule without events; keep one, for "
              "example on a "
              "day of the past");
}

TEST(ScheduleVariable, IsShownAsPeopleType) {
    BlockConfig const block = Setpoint()[0];
    VariableConfig const& week = block.variables[1];
    ValueNames const names = ScheduleNamesOf(block, week);
    std::string const typed = "Mon-Fri 06:00 21.5 °C, 20:00 17 °C";
    EXPECT_EQ(ScheduleForPeopleOf(week, ScheduleTextOf(week, typed, names), names), typed);
    EXPECT_EQ(ScheduleForPeopleOf(week, "not a schedule", names), std::nullopt);
    VariableConfig const& days = block.variables[2];
    EXPECT_EQ(ScheduleForPeopleOf(days, "0,525122026,10,00000000,4,9,16.000000;", names),
              "2026-12-25 (priority 10) 00:00 16 °C");
    EXPECT_EQ(ScheduleForPeopleOf(block.variables[3], ";;;;;;;", names), std::nullopt);
}
