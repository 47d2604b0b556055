#include <gtest/gtest.h>

#include "Projects.h"

using namespace test;

namespace {

// Nothing that a project does may hang or crash the program.
class ProjectLimits : public testing::Test {
protected:
    static std::string Mistake(std::string const& text) { return MistakeIn(text, {}, QuickLimits()); }

    FakeAddIn addIn;
    std::string const endless = "the project has run for 100 ms, the limit, and has not ended";
};

TEST_F(ProjectLimits, AnEndlessLoopIsStopped) {
    EXPECT_EQ(Mistake("\nwhile true do end"), "p.lua:2: " + endless);
}

TEST_F(ProjectLimits, AnEndlessLoopThatCatchesErrorsIsStopped) {
    EXPECT_EQ(Mistake("while true do pcall(function() while true do end end) end"), "p.lua:1: " + endless);
}

TEST_F(ProjectLimits, AnEndlessLoopInACoroutineIsStopped) {
    EXPECT_EQ(Mistake("local c = coroutine.wrap(function() while true do end end)\nc()"),
              "p.lua:2: p.lua:1: " + endless);
    EXPECT_EQ(Mistake("while true do coroutine.wrap(function() end)() end"), "p.lua:1: " + endless);
}

TEST_F(ProjectLimits, AnEndlessRecursionIsStopped) {
    EXPECT_NE(MistakeIn("local function f() return 1 + f() end f()").find("p.lua:1: stack overflow"),
              std::string::npos);
}

TEST_F(ProjectLimits, MemoryIsLimited) {
    tools::LuaLimits unhurried = QuickLimits();
    unhurried.time = std::chrono::seconds(60);
    EXPECT_EQ(MistakeIn("local t = {} for i = 1, 1e9 do t[i] = i end", {}, unhurried),
              "p.lua: not enough memory");
    EXPECT_EQ(Mistake("local s = ('x'):rep(1 << 30)"), "p.lua: not enough memory");
    EXPECT_EQ(Mistake("local ok = pcall(string.rep, 'x', 1 << 30)\n" + OneBlock), "loaded");
}

TEST_F(ProjectLimits, ATableThatContainsItselfIsAMistake) {
    EXPECT_EQ(Mistake("local t = {} t.Name = t BACnet.new(t)"),
              "p.lua:1: block: field \"Name\": expected a text, got a table");
    EXPECT_EQ(
        Mistake("local t = {" + Temperature + "} t[2] = t " + Block("Name='A', Address='1.2.3.4:5'", "t")),
        "p.lua:1: block \"A\": variable 1: entry 1 has no field name; write Field = value");
}

TEST_F(ProjectLimits, MetamethodsAreNotCalled) {
    EXPECT_EQ(Mistake("BACnet.new(setmetatable({}, {__index=function() while true do end end}))"),
              "p.lua:1: block: field \"Name\": missing");
}

TEST_F(ProjectLimits, UnsafeFunctionsAreRemoved) {
    EXPECT_EQ(Mistake("os.exit(0)"), "p.lua:1: attempt to call a nil value (field 'exit')");
    EXPECT_EQ(Mistake("debug.sethook()"), "p.lua:1: attempt to index a nil value (global 'debug')");
    EXPECT_EQ(Mistake("assert(not string.dump and not package.loadlib)\n" + OneBlock), "loaded");
}

TEST_F(ProjectLimits, PrecompiledChunksAreRejected) {
    EXPECT_EQ(Mistake("\x1BLua"), "p.lua: attempt to load a binary chunk (mode is 't')");
    EXPECT_EQ(Mistake("assert(load('\\27Lua', 'x', 'b'))"),
              "p.lua:1: attempt to load a binary chunk (mode is 't')");
    EXPECT_EQ(Mistake("assert(load('return 1')() == 1)\n" + OneBlock), "loaded");
}

TEST_F(ProjectLimits, AScriptCannotChangeAFieldOfABlock) {
    EXPECT_EQ(Mistake("local b = " + OneBlock + "b.Address = 5"),
              "p.lua:2: attempt to index a BACnet value (local 'b')");
}

TEST_F(ProjectLimits, AFinalizerMayRaiseAnError) {
    EXPECT_EQ(Mistake("setmetatable({}, {__gc = function() error('late') end})\n" + OneBlock), "loaded");
}

TEST_F(ProjectLimits, AnEndlessCallIntoTheLibraryEndsTheProcess) {
    tools::LuaLimits limits = QuickLimits();
    EXPECT_EXIT(MistakeIn("(('a'):rep(30)):find(('a?'):rep(30) .. ('a'):rep(30) .. ('.-'):rep(12) .. 'b')",
                          {}, limits),
                testing::ExitedWithCode(2), "p.lua: the project does not end");
}

}  // namespace
