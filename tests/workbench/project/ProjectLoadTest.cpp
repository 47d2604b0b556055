#include <gtest/gtest.h>

#include "Projects.h"

using namespace test;

namespace {

class ProjectLoad : public testing::Test {
protected:
    // The driver of the first block of the text.
    FakeDriver const& Load(std::string const& text, std::map<std::string, std::string> const& params = {}) {
        project = std::make_unique<workbench::LoadedProject>("p.lua", params);
        project->Load(workbench::SourceText(text));
        return dynamic_cast<FakeDriver const&>(*project->Blocks().front().protocol);
    }

    static long long Property(FakeDriver::Variable const& variable, char const* name) {
        long long value = -1;
        variable.properties.at(name).GetInt64(value);
        return value;
    }

    FakeAddIn addIn;
    std::unique_ptr<workbench::LoadedProject> project;
};

TEST_F(ProjectLoad, NamesBecomeCodes) {
    FakeDriver const& driver = Load(Block("Name='AHU', Address='1.2.3.4:5'",
                                          "{Name='D', Type='String', ObjectType='Multi-State_Value', "
                                          "ObjectProperties='DESCRIPTION', ObjectNumber=9}"));
    ASSERT_EQ(driver.variables.size(), 1u);
    FakeDriver::Variable const& variable = driver.variables[0];
    EXPECT_EQ(Property(variable, "ObjectType"), 18);
    EXPECT_EQ(Property(variable, "ObjectProperties"), 28);
    EXPECT_EQ(Property(variable, "ObjectNumber"), 9);
    EXPECT_EQ(variable.properties.size(), 3u);
    EXPECT_EQ(variable.descriptor.ReadType.Type, OpcUaType_String);
    EXPECT_EQ(variable.descriptor.IsWrite, 0);
}

TEST_F(ProjectLoad, CodesAreAllowedInsteadOfNames) {
    FakeDriver const& driver = Load(
        Block("Name='AHU', Address='1.2.3.4:5'",
              "{Name='D', Type=23, ElementType=11, ObjectType=8, ObjectProperties=0, ObjectNumber=4194302}"));
    FakeDriver::Variable const& variable = driver.variables.at(0);
    EXPECT_EQ(Property(variable, "ObjectType"), 8);
    EXPECT_EQ(Property(variable, "ObjectNumber"), 4194302);
    EXPECT_EQ(variable.descriptor.ReadType.Type, OpcUaType_DataValue);
    EXPECT_EQ(variable.descriptor.ReadType.ElementType, OpcUaType_Double);
}

TEST_F(ProjectLoad, FieldsReachTheDriverAndOthersKeepTheirDefaults) {
    FakeDriver const& driver = Load(
        Block("Name='AHU', Address='1.2.3.4:5', NetworkNumber=5, CountRepeat=2, WriteCondition='Always'"));
    EXPECT_EQ(driver.address, "1.2.3.4:5");
    std::map<std::string, long long> const expected = {
        {"NetworkNumber", 5}, {"CountRepeat", 2}, {"WriteCondition", 1}};
    EXPECT_EQ(driver.numbers, expected);
}

TEST_F(ProjectLoad, EveryVariableIsDeclaredInTheStore) {
    FakeDriver const& driver = Load(OneBlock + Block("Name='B', Address='1.2.3.4:5'"));
    VariableStore& store = project->Runtime().Variables();
    long long const first = project->Blocks()[0].variables[0].readId;
    long long const second = project->Blocks()[1].variables[0].readId;
    EXPECT_NE(first, second);
    EXPECT_EQ(driver.variables[0].descriptor.ReadId, first);
    EXPECT_EQ(store.Name(first), "AHU.T");
    EXPECT_EQ(store.Name(second), "B.T");
    EXPECT_EQ(store.Type(first).ElementType, OpcUaType_Float);
}

TEST_F(ProjectLoad, BlocksOfAProjectWithoutTasksRunInTheTaskMain) {
    Load(OneBlock);
    ASSERT_EQ(project->Tasks().size(), 1u);
    EXPECT_EQ(project->Tasks()[0].name, "main");
    EXPECT_EQ(project->Tasks()[0].period, 1000);
    EXPECT_NE(project->Runtime().FindTask("main"), nullptr);
}

TEST_F(ProjectLoad, BlocksRunInTheirTasks) {
    FakeDriver const& first = Load("Task{Name='slow', Period=5000} Task{Name='fast', Period=50}\n" +
                                   OneBlock + Block("Name='B', Address='1.2.3.4:5', Task='fast'"));
    auto const taskOf = [](ScadaProtocol const& driver) {
        return GetTaskSettings(FindSTTask(driver.DataProvider()))->Name;
    };
    EXPECT_EQ(taskOf(first), "slow");
    EXPECT_EQ(taskOf(*project->Blocks()[1].protocol), "fast");
    EXPECT_EQ(GetTaskSettings(project->Runtime().FindTask("fast"))->PeriodMilliseconds, 50u);
}

TEST_F(ProjectLoad, ParamsAreTextsAndUnknownOnesAreNil) {
    std::string const text =
        Block("Name='AHU', Address=Param.ahu or 'none', CountRepeat=tonumber(Param.count or '4')");
    EXPECT_EQ(Load(text, {{"ahu", "1.2.3.4:5"}}).address, "1.2.3.4:5");
    EXPECT_EQ(Load(text, {{"ahu", "1.2.3.4:5"}, {"count", "7"}}).numbers.at("CountRepeat"), 7);
}

TEST_F(ProjectLoad, UnusedParamsAreReported) {
    Load("local x = Param.b\n" + OneBlock, {{"a", "1"}, {"b", "2"}, {"c", "3"}});
    EXPECT_EQ(project->UnusedParams(), (std::vector<std::string>{"a", "c"}));
}

TEST_F(ProjectLoad, AScriptMayCompute) {
    Load("local function room(n) return " + Block("Name='Room ' .. n, Address='1.2.3.4:5'") +
         "end for n = 1, 12 do room(n) end");
    EXPECT_EQ(project->Blocks().size(), 12u);
    EXPECT_EQ(project->Blocks()[11].name, "Room 12");
}

TEST_F(ProjectLoad, AScriptMayContinueAfterAMistake) {
    Load("assert(not pcall(BACnet.new, {Name='AHU'}))\n" + OneBlock);
    EXPECT_EQ(project->Blocks().size(), 1u);
}

TEST_F(ProjectLoad, ScriptsCannotAccessTheInsideOfABlock) {
    Load("local b = " + OneBlock + "assert(type(b) == 'userdata' and getmetatable(b) == false)");
    Load("local n = 0 for name in pairs(BACnet) do n = n + 1 end assert(n == 1)\n" + OneBlock);
}

TEST_F(ProjectLoad, AByteOrderMarkAndALineForTheShellAreIgnored) {
    Load("\xEF\xBB\xBF" + OneBlock);
    Load("#!/usr/bin/env dorvel-workbench\n" + OneBlock);
}

TEST_F(ProjectLoad, TheValuesOfACycleAreInTheStore) {
    FakeAddIn polling([](FakeDriver& driver) {
        driver.Deliver(0, Float(21.5f));
        driver.Report(false, "");
    });
    Load(OneBlock);
    project->Runtime().RunOnce();
    VariableState state;
    ASSERT_TRUE(project->Runtime().Variables().Read(project->Blocks()[0].variables[0].readId, "", state));
    EXPECT_EQ(state.Value, Float(21.5f));
    EXPECT_EQ(state.Status, OpcUa_Good);
}

}  // namespace
