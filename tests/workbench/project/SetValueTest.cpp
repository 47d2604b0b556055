#include "SetValue.h"

#include <gtest/gtest.h>

#include "Projects.h"
#include "SetRequest.h"
#include "ShownValue.h"

using namespace test;
using namespace workbench;

namespace {

VariableConfig Variable(char const* object, _OpcUa_BuiltInType type) {
    VariableConfig variable;
    variable.name = "V";
    variable.type = {OpcUaType_DataValue, type};
    variable.objectType = ObjectTypes().FindName(object);
    variable.property = Properties().FindName("present-value");
    variable.write = true;
    return variable;
}

VariableConfig Mode(std::vector<std::string> const& texts = {"manual", "automatic", "Off"}) {
    VariableConfig variable = Variable("multi-state-value", OpcUaType_UInt32);
    variable.stateTexts = texts;
    return variable;
}

VariableConfig Setpoint(std::string const& unit = "percent") {
    VariableConfig variable = Variable("analog-value", OpcUaType_Float);
    variable.unit = unit;
    return variable;
}

// The value without its text, or the mistake.
std::string Set(VariableConfig variable, std::string const& text) {
    try {
        OpcUa_VariantHlp const value = SetValue(variable, text);
        EXPECT_EQ(value.GetType(), ValueType(variable));
        variable.stateTexts.clear();
        variable.unit.clear();
        return ShownValue(variable, value, 0);
    } catch (ProjectError const& mistake) {
        return mistake.what();
    }
}

TEST(SetValue, TakesAStateText) {
    EXPECT_EQ(Set(Mode(), "manual"), "1");
    EXPECT_EQ(Set(Mode(), "automatic"), "2");
    EXPECT_EQ(Set(Mode(), "MANUAL"), "1");
    EXPECT_EQ(Set(Mode(), "off"), "3");
    EXPECT_EQ(Set(Mode(), "3"), "3");
    EXPECT_EQ(Set(Mode(), "7"), "7");
}

TEST(SetValue, TakesAStateTextWithoutTheBlanksAtItsEnds) {
    EXPECT_EQ(Set(Mode({" off", "on  ", "on "}), "OFF"), "1");
    EXPECT_NE(Set(Mode({" off", "on  ", "on "}), "on").find("can be several states"), std::string::npos);
    EXPECT_EQ(Set(Mode({" off", "on  ", "on "}), "on "), "3");
    EXPECT_EQ(Set(Mode({"  ", "on"}), "").find("\"\" is not a state"), 0u);
}

TEST(SetValue, TakesTheTextOfABinaryState) {
    VariableConfig variable = Variable("binary-value", OpcUaType_Boolean);
    variable.stateTexts = {"blocked", "released", "never"};
    EXPECT_EQ(Set(variable, "released"), "true");
    EXPECT_EQ(Set(variable, "blocked"), "false");
    EXPECT_EQ(Set(variable, "true"), "true");
    EXPECT_EQ(Set(variable, "0"), "false");
    EXPECT_EQ(
        Set(variable, "released!"),
        "\"released!\" is not a state; allowed are \"blocked\" (false), \"released\" (true), by text or "
        "value (did you mean \"released\"?)");
    variable.type.ElementType = OpcUaType_Byte;
    EXPECT_EQ(Set(variable, "released"), "1");
}

TEST(SetValue, RefusesWhatIsNoState) {
    EXPECT_EQ(Set(Mode(), "manul"),
              "\"manul\" is not a state; allowed are \"manual\" (1), \"automatic\" (2), \"Off\" (3), by text "
              "or value (did you mean \"manual\"?)");
    EXPECT_EQ(
        Set(Mode(std::vector<std::string>(30, "s")), "x"),
        "\"x\" is not a state; allowed are \"s\" (1), \"s\" (2), \"s\" (3), \"s\" (4), \"s\" (5), \"s\" "
        "(6), \"s\" (7), \"s\" (8) and 22 more, by text or value");
    EXPECT_EQ(Set(Mode({"", "on"}), ""), "\"\" is not a state; allowed are \"on\" (2), by text or value");
}

TEST(SetValue, RefusesATextThatSeveralStatesHave) {
    EXPECT_EQ(Set(Mode({"on", "off", "on"}), "on"),
              "\"on\" can be several states: \"on\" (1), \"on\" (3); set the value in brackets");
    EXPECT_EQ(Set(Mode({"ON", "On"}), "on"),
              "\"on\" can be several states: \"ON\" (1), \"On\" (2); set the value in brackets");
    EXPECT_EQ(Set(Mode({"ON", "On"}), "On"), "2");
}

TEST(SetValue, IsTheNumberWhereATextIsOne) {
    EXPECT_EQ(Set(Mode({"2", "1"}), "2"), "2");
}

TEST(SetValue, OfAStateThatTheTypeDoesNotHoldIsRefused) {
    VariableConfig small = Mode(std::vector<std::string>(300, "s"));
    small.stateTexts.back() = "last";
    small.type.ElementType = OpcUaType_Byte;
    EXPECT_NE(Set(small, "last").find("is not a state"), std::string::npos);
}

TEST(SetValue, TakesTheUnitByItsName) {
    for (char const* text : {"21.5", "21.5 percent", "21.5  Percent", "21.5percent"}) {
        EXPECT_EQ(Set(Setpoint(), text), "21.5") << text;
    }
    EXPECT_EQ(Set(Setpoint("degrees-celsius"), "-3 degrees celsius"), "-3");
    EXPECT_EQ(Set(Setpoint("m\xC2\xB3/h"), "5 m\xC2\xB3/h"), "5");
    EXPECT_EQ(Set(Setpoint("big eggs"), "5 big eggs"), "5");
}

TEST(SetValue, TakesTheUnitByItsSymbol) {
    for (char const* text : {"21.5 \xC2\xB0"
                             "C",
                             "21.5\xC2\xB0"
                             "C",
                             "21.5 degC", "21.5 degrees-celsius"}) {
        EXPECT_EQ(Set(Setpoint("degrees-celsius"), text), "21.5") << text;
    }
    EXPECT_EQ(Set(Setpoint("\xC2\xB0"
                           "C"),
                  "21.5 degrees-celsius"),
              "21.5");
    EXPECT_EQ(Set(Setpoint("percent"), "50%"), "50");
}

TEST(SetValue, TakesAnExponentForAPartOfTheNumber) {
    EXPECT_EQ(Set(Setpoint(), "2.15e1"), "21.5");
    EXPECT_EQ(Set(Setpoint(), "2150E-2%"), "21.5");
    EXPECT_EQ(Set(Setpoint("eggs"), "5eggs"), "5");
    EXPECT_EQ(Set(Setpoint(), "1e99"), "\"1e99\" is not of type Float; expected a number such as 21.5");
    EXPECT_NE(Set(Setpoint(), "1e+").find("\"e+\" is not the unit"), std::string::npos);
}

TEST(SetValue, RefusesAUnitThatDiffersInThePrefix) {
    EXPECT_EQ(Set(Setpoint("megawatts"), "5 MW"), "5");
    for (char const* unit : {"megawatts", "MW", "MWx"}) {
        std::string const prefixed = std::string(unit) == "MWx" ? "5 mWx" : "5 mW";
        EXPECT_NE(Set(Setpoint(unit), prefixed).find("is not the unit of the variable"), std::string::npos)
            << unit;
    }
    EXPECT_EQ(Set(Setpoint("kilowatt-hours"), "5 kwh"), "5");
}

TEST(SetValue, RefusesAnotherUnit) {
    EXPECT_EQ(Set(Setpoint("degrees-celsius"), "21.5 K"),
              "\"K\" is not the unit of the variable; allowed is \"\xC2\xB0"
              "C\" or \"degrees-celsius\", or the "
              "number alone");
    EXPECT_EQ(Set(Setpoint("eggs"), "21.5 K"),
              "\"K\" is not the unit of the variable; allowed is \"eggs\", or the number alone");
    EXPECT_EQ(Set(Setpoint("eggs"), "21,5 eggs"),
              "\"21,5 eggs\" is not of type Float; expected a number such as 21.5 (did you mean \"21.5\"?)");
    EXPECT_EQ(Set(Setpoint("eggs"), "warm"), "\"warm\" is not of type Float; expected a number such as 21.5");
    EXPECT_EQ(Set(Setpoint(""), "21.5 K"), "\"21.5 K\" is not of type Float; expected a number such as 21.5");
}

TEST(SetValue, OfferedForCompletionAreTheStateTextsToo) {
    std::deque<BlockConfig> blocks(1);
    blocks[0].name = "B";
    blocks[0].variables = {Setpoint(), Mode()};
    blocks[0].variables[0].name = "S";
    EXPECT_EQ(Completions(blocks),
              (std::vector<std::string>{"B.S", "B.V", "B.V = manual", "B.V = automatic", "B.V = Off"}));
}

}  // namespace
