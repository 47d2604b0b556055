#include "ShownValue.h"

#include <gtest/gtest.h>

#include "NameTable.h"
#include "Projects.h"
#include "Units.h"
#include "ValueText.h"

using namespace test;
using namespace workbench;

namespace {

VariableConfig Variable(char const* object, _OpcUa_BuiltInType type, char const* property = "present-value") {
    VariableConfig variable;
    variable.name = "V";
    variable.type = {OpcUaType_DataValue, type};
    variable.objectType = ObjectTypes().FindName(object);
    variable.property = Properties().FindName(property);
    return variable;
}

OpcUa_VariantHlp Value(_OpcUa_BuiltInType type, char const* text) {
    OpcUa_VariantHlp value = Text(text);
    EXPECT_EQ(value.ChangeType(type), OpcUa_Good) << text;
    return value;
}

std::string Shown(VariableConfig const& variable, char const* text) {
    return ShownValue(variable, Value(ValueType(variable), text), 0);
}

VariableConfig WithTexts(VariableConfig variable, std::vector<std::string> const& texts) {
    variable.stateTexts = texts;
    return variable;
}

VariableConfig WithUnit(VariableConfig variable, std::string const& unit) {
    variable.unit = unit;
    return variable;
}

std::vector<std::string> const Modes = {"manual", "automatic", "", "off"};
std::vector<std::string> const Releases = {"blocked", "released"};

TEST(ShownValue, HasTheUnitAfterANumber) {
    VariableConfig const analog = WithUnit(Variable("analog-input", OpcUaType_Float), "widgets");
    EXPECT_EQ(Shown(analog, "21.5"), "21.5 widgets");
    EXPECT_EQ(ShownValue(analog, OpcUa_VariantHlp(), 0), "-");
    EXPECT_EQ(Shown(WithUnit(Variable("accumulator", OpcUaType_UInt32), "m\xC2\xB3"), "7"), "7 m\xC2\xB3");
    EXPECT_EQ(Shown(WithUnit(Variable("schedule", OpcUaType_Float), "widgets"), "5"), "5 widgets");
}

TEST(ShownValue, HasNoUnitAfterStatesAndTexts) {
    EXPECT_EQ(Shown(WithUnit(Variable("binary-input", OpcUaType_Boolean), "widgets"), "true"), "true");
    EXPECT_EQ(Shown(WithUnit(Variable("multi-state-input", OpcUaType_UInt32), "widgets"), "2"), "2");
    EXPECT_EQ(Shown(WithUnit(Variable("analog-input", OpcUaType_String, "description"), "widgets"), "x"),
              "x");
}

TEST(ShownValue, HasTheTextOfAStateFromOne) {
    VariableConfig const mode = WithTexts(Variable("multi-state-value", OpcUaType_UInt32), Modes);
    EXPECT_EQ(Shown(mode, "1"), "1 (manual)");
    EXPECT_EQ(Shown(mode, "2"), "2 (automatic)");
    EXPECT_EQ(Shown(mode, "4"), "4 (off)");
    for (char const* without : {"0", "3", "5", "4294967295"}) {
        EXPECT_EQ(Shown(mode, without), without);
    }
    VariableConfig const real = WithTexts(Variable("multi-state-output", OpcUaType_Double), Modes);
    EXPECT_EQ(Shown(real, "2"), "2 (automatic)");
    for (char const* without : {"2.5", "-1", "1e+300"}) {
        EXPECT_EQ(Shown(real, without), without);
    }
    VariableConfig const octet = WithTexts(Variable("multi-state-input", OpcUaType_SByte), Modes);
    EXPECT_EQ(Shown(octet, "-1"), "-1");
    EXPECT_EQ(Shown(octet, "1"), "1 (manual)");
}

TEST(ShownValue, HasTheTextOfABinaryState) {
    VariableConfig const release = WithTexts(Variable("binary-value", OpcUaType_Boolean), Releases);
    EXPECT_EQ(Shown(release, "true"), "true (released)");
    EXPECT_EQ(Shown(release, "false"), "false (blocked)");
    VariableConfig const number = WithTexts(Variable("binary-output", OpcUaType_UInt32), Releases);
    EXPECT_EQ(Shown(number, "0"), "0 (blocked)");
    EXPECT_EQ(Shown(number, "1"), "1 (released)");
    EXPECT_EQ(Shown(number, "2"), "2");
}

TEST(ShownValue, HasNoStateTextOfAnythingElse) {
    EXPECT_EQ(Shown(WithTexts(Variable("analog-input", OpcUaType_Float), Modes), "1"), "1");
    EXPECT_EQ(Shown(WithTexts(Variable("binary-input", OpcUaType_UInt32, "polarity"), Releases), "1"), "1");
    EXPECT_EQ(Shown(WithTexts(Variable("multi-state-input", OpcUaType_Boolean), Modes), "true"), "true");
}

TEST(ShownValue, OfAScheduleIsAStateIfItIsWhole) {
    EXPECT_EQ(Shown(WithTexts(Variable("schedule", OpcUaType_Boolean), Releases), "true"), "true (released)");
    EXPECT_EQ(Shown(WithTexts(Variable("schedule", OpcUaType_UInt32), Modes), "1"), "1 (manual)");
    EXPECT_EQ(Shown(WithTexts(Variable("schedule", OpcUaType_Float), Modes), "1"), "1");
}

TEST(ShownValue, KeepsTextsOnTheirLine) {
    EXPECT_EQ(Shown(WithTexts(Variable("binary-value", OpcUaType_Boolean), {"a", "b\x1B[2J\n"}), "true"),
              "true (b\\x1B[2J\\n)");
    EXPECT_EQ(Shown(WithUnit(Variable("analog-input", OpcUaType_Float), "a\nb"), "1"), "1 a\\nb");
}

TEST(ShownValue, WithoutTheFieldsIsTheTextOfTheValue) {
    for (NameRow const& type : ObjectTypes()) {
        for (NameRow const& property : Properties()) {
            VariableConfig const variable = Variable(type.name, OpcUaType_Int32, property.name);
            EXPECT_EQ(Shown(variable, "1"), "1") << type.name << property.name;
        }
    }
}

TEST(Units, HaveANumberByTheirNames) {
    EXPECT_EQ(UnitOfName("degrees-celsius"), 62u);
    EXPECT_EQ(UnitOfName("Degrees Celsius"), 62u);
    EXPECT_EQ(UnitOfName("kilowatt_hours"), 19u);
    EXPECT_FALSE(UnitOfName("degrees"));
    EXPECT_FALSE(UnitOfName(""));
}

TEST(Units, OfTheStandardAreShownByTheirSymbols) {
    EXPECT_EQ(UnitText("degrees-celsius"),
              "\xC2\xB0"
              "C");
    EXPECT_EQ(UnitText("Kilowatt Hours"), "kWh");
    EXPECT_EQ(UnitText("no-units"), "");
}

TEST(ShownValue, WithoutAUnitIsTheNumberAlone) {
    EXPECT_EQ(Shown(WithUnit(Variable("analog-input", OpcUaType_Float), "no-units"), "5"), "5");
}

TEST(Units, OfAVendorAreShownAsTheyAre) {
    EXPECT_EQ(UnitText("hen's eggs"), "hen's eggs");
}

}  // namespace
