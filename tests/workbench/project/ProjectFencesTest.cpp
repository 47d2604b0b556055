// Ways around the limits of a project.
#include <gtest/gtest.h>

#include "Projects.h"
#include "TemporaryFolder.h"

using namespace test;

namespace {

class ProjectFences : public testing::Test {
protected:
    static std::string Mistake(std::string const& text) { return MistakeIn(text, {}, QuickLimits()); }

    // Lua code that requires a module with this content.
    std::string Require(std::string const& content) const {
        folder.Write("fences.lua", content);
        return "package.path = '" + folder.Path() + "/?.lua' local m = require 'fences' ";
    }

    FakeAddIn addIn;
    TemporaryFolder folder;
};

TEST_F(ProjectFences, AModuleInLuaIsRequired) {
    EXPECT_EQ(Mistake(Require("return {name = ...}") + "assert(m.name == 'fences')\n" + OneBlock), "loaded");
}

TEST_F(ProjectFences, APrecompiledModuleIsRejected) {
    EXPECT_NE(Mistake(Require("\x1BLua") + OneBlock).find("attempt to load a binary chunk (mode is 't')"),
              std::string::npos);
}

TEST_F(ProjectFences, ALibraryInCCannotBeLoaded) {
    EXPECT_EQ(Mistake("package.cpath = '?' assert(#package.searchers == 2)\n" + OneBlock), "loaded");
    EXPECT_NE(Mistake("package.cpath = '/lib/x86_64-linux-gnu/?.so.6' require 'libc'")
                  .find("module 'libc' not found"),
              std::string::npos);
}

TEST_F(ProjectFences, AMissingModuleIsReported) {
    EXPECT_EQ(Mistake("require 'no_such_module'"),
              "p.lua:1: module 'no_such_module' not found: there is no file no_such_module.lua beside the "
              "project");
}

TEST_F(ProjectFences, ALongTextThatIsSetAgainAndAgainIsRejected) {
    EXPECT_EQ(Mistake("local s = ('x'):rep(1 << 20) while true do Set('A.T', s) end"),
              "p.lua:1: Set: the script passes too much data");
}

TEST_F(ProjectFences, ALongTextInManyVariablesIsRejected) {
    EXPECT_EQ(Mistake("local s, t = ('x'):rep(1 << 20), {} for i = 1, 50 do t[i] = {Name = s} end "
                      "BACnet.new{Vars = t}"),
              "p.lua:1: the script passes too much data");
}

TEST_F(ProjectFences, ManyBlocksWithOneListAreRejectedAtTheLimit) {
    EXPECT_EQ(
        MistakeIn("local t = {} for i = 1, 5000 do t[i] = " + Temperature +
                      " t[i].Name = 'V' .. i end\n"
                      "for i = 1, 1000 do BACnet.new{Name = 'B' .. i, Address = '1.2.3.4:5', Vars = t} end",
                  {}, {std::chrono::seconds(60), std::size_t{16} << 20}),
        "p.lua:2: the script passes too much data");
}

TEST_F(ProjectFences, EveryCallOfAfterHasTheWholeLimit) {
    workbench::LoadedProject project("p.lua", {}, QuickLimits());
    project.Load(workbench::SourceText(
        Block("Name='A', Address='1.2.3.4:5'",
              "{Name='T', Type='String', ObjectType='analog-value', "
              "ObjectProperties='description', ObjectNumber=1, Write=true}") +
        "local s = ('x'):rep(1 << 20) local function again() Set('A.T', s) After(0, again) end again()"));
    std::size_t sets = project.TakeSets().size();
    for (int i = 0; i < 20; ++i) {
        project.CallDue();
        sets += project.TakeSets().size();
    }
    EXPECT_EQ(sets, 21u);
}

TEST_F(ProjectFences, DeepNestingInTheTextIsRejected) {
    EXPECT_NE(Mistake("local x = " + std::string(5000, '(')).find("overflow"), std::string::npos);
    EXPECT_NE(Mistake("local x = " + std::string(5000, '{')).find("overflow"), std::string::npos);
}

TEST_F(ProjectFences, ZeroOctetsAreASyntaxError) {
    EXPECT_NE(Mistake(std::string(10, '\0')).find("p.lua:1: unexpected symbol"), std::string::npos);
}

}  // namespace
