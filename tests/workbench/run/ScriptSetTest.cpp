#include <gtest/gtest.h>

#include "FakeEnvironment.h"
#include "Projects.h"
#include "dorvelshare/Trace.h"

using namespace test;
using namespace workbench;

namespace {

std::string const Writable =
    R"({Name="T", Type="Float", ObjectType="analog-value", ObjectProperties="present-value", ObjectNumber=1, Write=true},
       {Name="On", Type="Boolean", ObjectType="binary-value", ObjectProperties="present-value", ObjectNumber=1, Write=true},
       {Name="Only read", Type="Float", ObjectType="analog-value", ObjectProperties="present-value", ObjectNumber=2})";

std::string const WritableBlock = Block(R"(Name="AHU", Address="192.168.1.20:47808")", Writable);

class ScriptSet : public testing::Test {
protected:
    ScriptSet() {
        dorvel::SetEnvironment(&world);
        dorvel::SetLogSink([this](std::string_view piece) { log += piece; });
    }
    ~ScriptSet() override {
        dorvel::SetLogSink({});
        dorvel::SetEnvironment(nullptr);
    }

    void Load(std::string const& text) { project.Load(SourceText(text)); }

    // "AHU.T=21.5 ...": what has been set since the last call.
    std::string Sets() {
        std::string text;
        for (SetRequest const& request : project.TakeSets()) {
            std::string value;
            request.value.GetString(value);
            text += FullName(*request.block, *request.variable) + "=" + value + " ";
        }
        return text;
    }

    std::string After(double seconds) {
        world.time += static_cast<long long>(seconds * 1e7);
        project.CallDue();
        return Sets();
    }

    FakeEnvironment world;
    FakeAddIn addIn;
    LoadedProject project{"p.lua", {}, QuickLimits()};
    std::string log;
};

TEST_F(ScriptSet, AScriptCanSetAVariableBeforeItsBlock) {
    Load("Set('AHU.On', true)\n" + WritableBlock + "Set('AHU.T', 21.5) Set('AHU.T', '22') Set('AHU.T', 23)");
    EXPECT_EQ(Sets(), "AHU.On=true AHU.T=21.5 AHU.T=22 AHU.T=23 ");
    EXPECT_EQ(Sets(), "");
}

TEST_F(ScriptSet, AMistakeHasFileAndLine) {
    EXPECT_EQ(MistakeIn(WritableBlock + "Set('AHU.t', 1)"),
              "p.lua:4: Set: \"AHU.t\" is not a variable of the project (did you mean \"AHU.T\"?)");
    EXPECT_EQ(MistakeIn(WritableBlock + "\nSet('AHU.On', 'of')"),
              "p.lua:5: Set: \"AHU.On\": \"of\" is not of type Boolean; expected true or false");
    EXPECT_EQ(MistakeIn("Set('AHU.Only read', 1)\n" + WritableBlock),
              "p.lua:1: Set: \"AHU.Only read\" is read-only; to set it, give it Write = true in the project");
    EXPECT_EQ(MistakeIn("Set(5, 1)"), "p.lua:1: Set: expected \"Block.Variable\", got 5");
    EXPECT_EQ(MistakeIn("Set('AHU.T')"), "p.lua:1: Set: expected a number, a text or a boolean, got nil");
    EXPECT_EQ(MistakeIn("Set('AHU.T', {})"),
              "p.lua:1: Set: expected a number, a text or a boolean, got a table");
}

TEST_F(ScriptSet, AfterCallsAFunctionAtItsTime) {
    Load(WritableBlock +
         "After(10, function() Set('AHU.T', 10) end) After(2.5, function() Set('AHU.T', 2) end)");
    EXPECT_EQ(After(2.4), "");
    EXPECT_EQ(After(0.1), "AHU.T=2 ");
    EXPECT_EQ(After(1), "");
    EXPECT_EQ(After(7), "AHU.T=10 ");
    EXPECT_EQ(After(100), "");
}

TEST_F(ScriptSet, AfterCallsFunctionsInTheOrderOfTheirTimes) {
    Load(WritableBlock + "After(2, function() Set('AHU.T', 2) end) After(1, function() Set('AHU.T', 1) end)");
    EXPECT_EQ(After(5), "AHU.T=1 AHU.T=2 ");
}

TEST_F(ScriptSet, AFunctionOfAfterMayRepeatItself) {
    Load(WritableBlock +
         "local n = 0\nlocal function tick() n = n + 1 Set('AHU.T', n) After(1, tick) end tick()");
    EXPECT_EQ(Sets(), "AHU.T=1 ");
    EXPECT_EQ(After(1), "AHU.T=2 ");
    EXPECT_EQ(After(1), "AHU.T=3 ");
    EXPECT_EQ(After(0.5), "");
}

TEST_F(ScriptSet, AMistakeDuringTheRunIsALineOfTheLog) {
    Load(WritableBlock + "After(0, function() Set('AHU.t', 1) end)\nAfter(0, function() error({}) end)\n" +
         "After(0, function() Set('AHU.T', 1) end)\nAfter(0, function() while true do end end)");
    EXPECT_EQ(After(0), "AHU.T=1 ");
    EXPECT_EQ(log,
              "p.lua:4: Set: \"AHU.t\" is not a variable of the project (did you mean \"AHU.T\"?)\n"
              "the script raised an error that is not a text but a table\n"
              "p.lua:7: the project has run for 100 ms, the limit, and has not ended\n");
}

TEST_F(ScriptSet, AfterNeedsSecondsAndAFunction) {
    EXPECT_EQ(MistakeIn("After(-1, print)"),
              "p.lua:1: bad argument #1 to 'After' (expected 0 to 1000000000 seconds)");
    EXPECT_NE(MistakeIn("After(0/0, print)").find("expected 0 to 1000000000 seconds"), std::string::npos);
    EXPECT_NE(MistakeIn("After(1)").find("function expected"), std::string::npos);
    EXPECT_NE(MistakeIn("After('soon', print)").find("number expected"), std::string::npos);
}

TEST(WriteChannels, AreDeclaredForVariablesWithWrite) {
    FakeAddIn addIn;
    LoadedProject project("p.lua", {});
    project.Load(SourceText(Block(R"(Name="A", Address="1.2.3.4:5", Priority=8)", Writable) +
                            Block(R"(Name="B", Address="1.2.3.4:5", WriteCondition="OnTrigger")", Writable) +
                            Block(R"(Name="C", Address="1.2.3.4:5", WriteCondition="OnTrigger")")));
    auto const driver = [&](std::size_t place) {
        return static_cast<FakeDriver*>(project.Blocks()[place].protocol);
    };
    BlockConfig const& first = project.Blocks()[0];
    EXPECT_EQ(driver(0)->numbers["Priority"], 8);
    EXPECT_EQ(driver(0)->variables[0].descriptor.IsWrite, 1);
    EXPECT_EQ(driver(0)->variables[0].descriptor.WriteId, first.variables[0].writeId);
    EXPECT_NE(first.variables[0].writeId, first.variables[0].readId);
    EXPECT_EQ(driver(0)->variables[2].descriptor.IsWrite, 0);
    EXPECT_EQ(first.variables[2].writeId, 0);
    EXPECT_EQ(driver(0)->WriteItemId, 0);
    EXPECT_NE(driver(1)->WriteItemId, 0);
    EXPECT_EQ(driver(1)->WriteCondition, ProtocolWriteCondition::OnTrigger);
    EXPECT_EQ(driver(2)->WriteItemId, 0);  // nothing to write
    EXPECT_EQ(MistakeIn(Block(R"(Name="A", Address="1.2.3.4:5")", R"({Name="T", Type="Float", Write=1,
              ObjectType="analog-value", ObjectProperties="present-value", ObjectNumber=1})")),
              "p.lua:1: block \"A\": variable \"T\": field \"Write\": expected true or false, got 1");
}

}  // namespace
