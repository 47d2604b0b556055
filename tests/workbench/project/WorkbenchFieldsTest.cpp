// The fields that only the workbench has: units, texts, and what point lists say.
#include <gtest/gtest.h>

#include "DriverTable.h"
#include "LuaState.h"
#include "ProjectScript.h"
#include "Projects.h"
#include "ScriptReader.h"
#include "StandInDriver.h"

using namespace test;
using namespace workbench;

namespace {

std::string const Plain =
    R"(Name="T", Type="DataValue", ElementType="Float", ObjectType="analog-input", ObjectProperties="present-value", ObjectNumber=1)";

std::string With(std::string const& fields, std::string const& ofBlock = "") {
    return Block(R"(Name="AHU", Address="192.168.1.20:47808")" + ofBlock, "{" + Plain + ", " + fields + "}");
}

BlockConfig Read(std::string const& text) {
    ProjectScript script("p.lua", {}, {}, ProjectScript::OnMistake::Throw);
    EXPECT_TRUE(OpenStandInDriver(script.State()));
    EXPECT_TRUE(script.InstallNames());
    script.Read(SourceText(text), nullptr);
    return script.Blocks().front();
}

std::string MistakeOf(std::string const& text) {
    FakeAddIn const addIn;
    return MistakeIn(text);
}

// What is wrong with the fields of the variable, after its name.
std::string MistakeWith(std::string const& fields) {
    static std::string const start = "p.lua:1: block \"AHU\": variable \"T\": ";
    std::string const mistake = MistakeOf(With(fields));
    return mistake.compare(0, start.size(), start) == 0 ? mistake.substr(start.size()) : mistake;
}

TEST(WorkbenchFields, AreRead) {
    BlockConfig const block = Read(With(R"(
        Unit = "degrees-celsius", StateTexts = {"off", "", "on"}, Description = "Behind the coil",
        Point = {KeyName = "K1", ObjectName = "AHU1'T", Default = 21.5, Minimum = -50, Maximum = 150,
                 HighLimit = 90, LowLimit = 5.5, Settable = false, Cov = true, NotificationClass = 3,
                 VendorAddress = "0x10"})",
                                        ", DeviceInstance = 2001"));
    EXPECT_EQ(block.deviceInstance, 2001u);
    VariableConfig const& variable = block.variables.front();
    EXPECT_EQ(variable.unit, "degrees-celsius");
    EXPECT_EQ(variable.stateTexts, (std::vector<std::string>{"off", "", "on"}));
    EXPECT_EQ(variable.description, "Behind the coil");
    PointFields const& point = variable.point;
    EXPECT_EQ(point.keyName, "K1");
    EXPECT_EQ(point.objectName, "AHU1'T");
    EXPECT_EQ(point.defaultValue, "21.5");
    EXPECT_EQ(point.minimum, -50);
    EXPECT_EQ(point.maximum, 150);
    EXPECT_EQ(point.highLimit, 90);
    EXPECT_EQ(point.lowLimit, 5.5);
    EXPECT_EQ(point.settable, false);
    EXPECT_EQ(point.cov, true);
    EXPECT_EQ(point.notificationClass, 3u);
    EXPECT_EQ(point.vendorAddress, "0x10");
}

TEST(WorkbenchFields, AreEmptyWithoutThem) {
    BlockConfig const block = Read(OneBlock);
    EXPECT_FALSE(block.deviceInstance);
    VariableConfig const& variable = block.variables.front();
    EXPECT_TRUE(variable.unit.empty() && variable.stateTexts.empty() && variable.description.empty());
    EXPECT_TRUE(variable.point.keyName.empty() && variable.point.defaultValue.empty());
    EXPECT_FALSE(variable.point.minimum || variable.point.settable || variable.point.notificationClass);
}

TEST(WorkbenchFields, DefaultIsTheTextOfANumberABooleanOrAText) {
    auto const read = [](std::string const& value) {
        return Read(With("Point = {Default = " + value + "}")).variables.front().point.defaultValue;
    };
    EXPECT_EQ(read("21"), "21");
    EXPECT_EQ(read("0.1"), "0.1");
    EXPECT_EQ(read("true"), "true");
    EXPECT_EQ(read("\"off\""), "off");
}

TEST(WorkbenchFields, RefuseAnotherKindOfValue) {
    EXPECT_EQ(MistakeWith("Unit = 62"), "field \"Unit\": expected a text, got 62");
    EXPECT_EQ(MistakeWith("Unit = \"\""), "field \"Unit\": must not be empty");
    EXPECT_EQ(MistakeWith("Description = true"), "field \"Description\": expected a text, got true");
    EXPECT_EQ(MistakeWith("StateTexts = \"off\""),
              "field \"StateTexts\": expected a list of texts such as {\"off\", \"on\"}, got \"off\"");
    EXPECT_EQ(MistakeWith("StateTexts = {}"),
              "field \"StateTexts\": expected a list of texts such as {\"off\", \"on\"}, got an empty table");
    EXPECT_EQ(
        MistakeWith("StateTexts = {off = 1}"),
        "field \"StateTexts\": expected a list of texts such as {\"off\", \"on\"}, got a table with the "
        "key \"off\"");
    EXPECT_EQ(MistakeWith("StateTexts = {\"off\", 2}"), "field \"StateTexts[2]\": expected a text, got 2");
    EXPECT_EQ(MistakeWith("Point = 5"), "field \"Point\": expected a table, got 5");
    EXPECT_EQ(MistakeWith("Point = {Settable = \"Y\"}"),
              "field \"Point.Settable\": expected true or false, got \"Y\"");
    EXPECT_EQ(MistakeWith("Point = {Minimum = \"1\"}"),
              "field \"Point.Minimum\": expected a number, got \"1\"");
    EXPECT_EQ(
        MistakeWith("Point = {Default = {}}"),
        "field \"Point.Default\": expected a number, a text or a boolean, got a " + std::string("table"));
}

TEST(WorkbenchFields, RefuseUnknownFieldsOfAPointWithASuggestion) {
    EXPECT_EQ(MistakeWith("Point = {KeyNam = \"K\"}"),
              "field \"Point.KeyNam\": unknown (did you mean \"KeyName\"?)");
    EXPECT_EQ(MistakeWith("Unti = \"percent\""), "field \"Unti\": unknown (did you mean \"Unit\"?)");
}

TEST(WorkbenchFields, RefuseWhatIsOutOfRange) {
    EXPECT_EQ(MistakeWith("Point = {Maximum = 1/0}"),
              "field \"Point.Maximum\": inf is out of range; allowed are finite numbers");
    EXPECT_EQ(MistakeWith("Point = {NotificationClass = -1}"),
              "field \"Point.NotificationClass\": -1 is out of range; allowed is 0 to 4194302");
    EXPECT_EQ(MistakeOf(With("Unit = \"percent\"", ", DeviceInstance = 4194303")),
              "p.lua:1: block \"AHU\": field \"DeviceInstance\": 4194303 is out of range; allowed is 0 to "
              "4194302");
    EXPECT_EQ(MistakeWith("Unit = string.rep(\"x\", 256)"),
              "field \"Unit\": \"" + std::string(60, 'x') + "...\" has 256 octets; allowed are up to 255");
    EXPECT_EQ(
        MistakeWith("StateTexts = (function() local t = {} for i = 1, 5001 do t[i] = \"s\" end return t "
                    "end)()"),
        "field \"StateTexts\": has 5001 texts; allowed are up to 5000");
}

TEST(WorkbenchFields, RefuseTextsThatAreNotUtf8) {
    EXPECT_EQ(MistakeWith("Unit = \"\\xB0C\""),
              "field \"Unit\": \"\xEF\xBF\xBD"
              "C\" is not UTF-8; save the file in that encoding");
    EXPECT_EQ(MistakeWith("StateTexts = {\"on\", \"\\xFF\"}"),
              "field \"StateTexts[2]\": \"\xEF\xBF\xBD\" is not UTF-8; save the file in that encoding");
}

TEST(WorkbenchFields, NameTheLineOfTheField) {
    EXPECT_EQ(MistakeOf(With("\nUnit = \"percent\",\nPoint = {\nCov = 1}")),
              "p.lua:3: block \"AHU\": variable \"T\": field \"Point.Cov\": expected true or false, got 1");
}

// Everything that the table has, by name.
std::string Dump(tools::ScriptValue const& value) {
    if (!value.IsTable()) {
        return value.Describe();
    }
    std::string text = "{";
    for (tools::ScriptValue const& entry : value.list) {
        text += Dump(entry) + ",";
    }
    for (tools::ScriptField const& field : value.fields) {
        text += field.name + "=" + Dump(field.value) + ",";
    }
    return text + "}";
}

std::string DriverTableOf(BlockConfig const& block) {
    tools::LuaState const state(
        {}, "test", [](lua_State*) { return 0; }, nullptr);
    PushDriverTable(state.Get(), block);
    std::size_t room = 100'000;
    return Dump(tools::ReadValue(state.Get(), 1, 5, room));
}

TEST(WorkbenchFields, AreNotPassedToTheDriver) {
    std::string const plain = DriverTableOf(Read(OneBlock));
    EXPECT_EQ(plain,
              "{Address=\"192.168.1.20:47808\",Vars={{ElementType=10,ObjectNumber=1,ObjectProperties=0,"
              "ObjectType=1,ReadId=0,Type=23,},},}");
    EXPECT_EQ(DriverTableOf(Read(With(R"(Unit = "percent", StateTexts = {"a"}, Description = "d",
                                        Point = {KeyName = "K", Cov = true})",
                                      ", DeviceInstance = 5"))),
              plain);
}

}  // namespace
