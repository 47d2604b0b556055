#include "ProjectCheck.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>

#include "CheckedText.h"
#include "TemporaryFolder.h"

using namespace test;
using namespace workbench;

namespace {

std::string const Good = ProjectOf(Local, {Variable("V", "Float", "analog-input", 1)});

// "file:line code" of each finding, without the folder.
Lines Places(ProjectReport const& report, std::string const& folder) {
    Lines places;
    for (Finding const& finding : report.findings) {
        std::string const file = finding.where.file.compare(0, folder.size(), folder) == 0
                                     ? finding.where.file.substr(folder.size() + 1)
                                     : finding.where.file;
        places.push_back(file + ":" + std::to_string(finding.where.line) + " " + RowOf(finding.code).name);
    }
    return places;
}

TEST(ProjectCheck, CountsWhatAGoodProjectHas) {
    ProjectReport const report = Check(Good);
    EXPECT_TRUE(report.findings.empty());
    EXPECT_EQ(report.blocks, 1u);
    EXPECT_EQ(report.variables, 1u);
    EXPECT_EQ(report.tasks, 1u);
    EXPECT_EQ(SummaryText(report), "p.lua: no mistake (blocks: 1, variables: 1, tasks: 1)\n");
}

TEST(ProjectCheck, AMistakeDoesNotHideTheNextOnes) {
    EXPECT_EQ(
        Found("Task{Name='a', Period=0, Cycle=1}\n"
              "BACnet.new{Name='B', Address='1.2.3.4', MAC=5, Priority=17, Colour=1, Task='none', Vars={\n"
              "{Name='T', Type='Flaot', ObjectType='analog', ObjectNumber=-1},\n"
              "{Name='U', Type='DataValue', ObjectType=1, ObjectNumber=1, ObjectProperties=0},\n"
              "5,\n"
              "{" +
              Variable("T", "Float", "analog-input", 1) +
              "},\n"
              "{" +
              Variable("V", "Float", "analog-input", 1, "bias") +
              "}}}\n"
              "BACnet.new{Name='B', Address='1.2.3.4:5', Vars={}}\n"
              "Set('B.X', 1)\n"
              "error('late')"),
        (Lines{"unknown-field 1  Cycle", "out-of-range 1  Period", "unknown-field 2 B Colour",
               "bad-address 2 B Address", "wrong-kind 2 B MAC", "out-of-range 2 B Priority",
               "wrong-kind 2 B ", "unknown-name 2 B Task", "unknown-name 3 B.T Type",
               "unknown-name 3 B.T ObjectType", "missing-field 3 B.T ObjectProperties",
               "out-of-range 3 B.T ObjectNumber", "wrong-element-type 4 B.U ElementType",
               "name-taken 6 B.T Name", "not-decoded 7 B.V ObjectProperties", "wrong-kind 8 B Vars",
               "name-taken 8 B Name", "bad-set 9  ", "script-error 10  "}));
}

TEST(ProjectCheck, WhatTheScriptCatchesIsNoMistake) {
    EXPECT_EQ(Found("assert(not pcall(BACnet.new, {Name='A'}))\n" + Good), Lines());
    EXPECT_EQ(Found("local ok = pcall(Set, {}, 1) assert(not ok)\n" + Good), Lines());
}

TEST(ProjectCheck, AMistakeThatTheScriptRaisesAgainKeepsItsCode) {
    EXPECT_EQ(Found("local ok, m = pcall(BACnet.new, {Name='A', Address='x', Vars=5}) error(m, 0)"),
              (Lines{"bad-address 1 A Address", "wrong-kind 1 A Vars"}));
}

TEST(ProjectCheck, AMistakeInACoroutineKeepsItsCode) {
    EXPECT_EQ(Found("coroutine.wrap(function() BACnet.new{Name='A', Address='x', Vars=5} end)()"),
              (Lines{"bad-address 1 A Address", "wrong-kind 1 A Vars"}));
}

TEST(ProjectCheck, AMistakeThatLeavesNoBlockIsReportedThoughItIsCaught) {
    EXPECT_EQ(Found("pcall(function() BACnet.new{Name='A', Address='x', Vars=5} end)"),
              (Lines{"bad-address 1 A Address", "wrong-kind 1 A Vars"}));
}

TEST(ProjectCheck, AVariableWithAMistakeCanBeSet) {
    EXPECT_EQ(Found("Set('B.V', 1)\n" + ProjectOf(Local, {"Name='V', Type='Float'"})).size(), 3U);
}

TEST(ProjectCheck, AVariableOfARefusedListCanBeSet) {
    EXPECT_EQ(Found("Set('B.V', 1)\n" + ProjectOf(Local, {"Name='V'"}) + "BACnet.new{Name='C', " + Local +
                    ", Vars=5}\nSet('C.V', 1)\nSet('D.V', 1)")
                  .size(),
              6U);
}

TEST(ProjectCheck, ABlockIsAnObjectWithItsFields) {
    EXPECT_EQ(Found("local b = " + Good +
                    "assert(type(b) == 'userdata' and getmetatable(b) == false)\n"
                    "assert(b.Address == '192.168.1.20:47808' and b.Fault == nil) b.Priority = 5\n"
                    "assert(b.Priority == 5 and b() == false)"),
              Lines());
}

TEST(ProjectCheck, AProjectWithoutBlocksIsAMistake) {
    EXPECT_EQ(Found("Task{Name='a'}"), Lines{"no-block 0  "});
}

TEST(ProjectCheck, AFileThatCannotBeReadIsAFinding) {
    ProjectReport const report = CheckProject("no/such/file.lua", {});
    ASSERT_EQ(report.findings.size(), 1u);
    EXPECT_EQ(report.findings[0].code, FindingCode::UnreadableFile);
    EXPECT_EQ(report.findings[0].where.file, "no/such/file.lua");
    EXPECT_EQ(report.findings[0].message, "cannot be read: No such file or directory");
}

TEST(ProjectCheck, AnEndlessScriptIsAFinding) {
    tools::LuaLimits limits;
    limits.time = std::chrono::minutes(1);
    limits.instructions = 10'000;
    ProjectReport const report = CheckProjectText("p.lua", Good + "while true do end", {}, limits);
    ASSERT_EQ(report.findings.size(), 1u);
    EXPECT_EQ(report.findings[0].code, FindingCode::ScriptError);
    EXPECT_EQ(report.findings[0].where.line, 3);
}

TEST(ProjectCheck, ParamsReachTheProject) {
    std::string const text =
        "BACnet.new{Name='B', Address=Param.ahu, Vars={{" + Variable("V", "Float", "analog-input", 1) + "}}}";
    EXPECT_EQ(Found(text), Lines{"missing-field 1 B Address"});
    ProjectReport const report = CheckProjectText("p.lua", text, {{"ahu", Device}, {"x", "1"}});
    EXPECT_TRUE(report.findings.empty());
    EXPECT_EQ(report.unusedParams, Lines{"x"});
}

// Projects of several files.
class SeveralFiles : public testing::Test {
protected:
    std::string Write(char const* name, std::string const& text) { return folder.Write(name, text); }
    Lines CheckFile(std::string const& path) { return Places(CheckProject(path, {}), folder.Path()); }
    static std::string MessageOfFile(std::string const& path) {
        return CheckProject(path, {}).findings.at(0).message;
    }

    std::string const bad = "{" + Variable("V", "Float", "analog-input", 1, "bias") + "}";
    std::string const start = std::string("BACnet.new{Name='B', Address='") + Device + "', Vars=";
    TemporaryFolder folder;
};

TEST_F(SeveralFiles, ABlockInARequiredFileHasItsFileAndLine) {
    Write("rooms.lua", "\n\n" + start + "{\n" + bad + "}, Timeout=5}");
    EXPECT_EQ(CheckFile(Write("main.lua", "require 'rooms'")),
              (Lines{"rooms.lua:4 not-decoded", "rooms.lua:4 field-without-effect"}));
}

TEST_F(SeveralFiles, VariablesInARequiredFileHaveTheirFileAndLine) {
    Write("points.lua", "return {\n" + bad + "}");
    EXPECT_EQ(CheckFile(Write("main.lua", "\n" + start + "require 'points', Timeout=5}")),
              (Lines{"main.lua:2 field-without-effect", "points.lua:2 not-decoded"}));
}

TEST_F(SeveralFiles, ListsWithEqualNamesAreToldApart) {
    auto const list = [](char const* property) {
        return "return {\n\n{" + Variable("V", "Float", "analog-input", 1, property) + "}}";
    };
    Write("first.lua", list("present-value"));
    Write("second.lua", list("bias"));
    std::string const text =
        "Task{Name='a'} Task{Name='b'} BACnet.new{Name='A', Task='a', Address='1.2.3.4:5', "
        "Vars=require 'first'}\nBACnet.new{Name='B', Task='b', Address='1.2.3.5:5', "
        "Vars=require 'second'}";
    EXPECT_EQ(CheckFile(Write("main.lua", text)), Lines{"second.lua:3 not-decoded"});
}

TEST_F(SeveralFiles, DofileIsBesideTheProjectToo) {
    Write("rooms.lua", start + "{" + bad + "}}");
    EXPECT_EQ(CheckFile(Write("main.lua", "dofile 'rooms.lua'")), Lines{"rooms.lua:1 not-decoded"});
    EXPECT_EQ(CheckFile(Write("main.lua", "assert(loadfile('rooms.lua'))()")),
              Lines{"rooms.lua:1 not-decoded"});
}

TEST_F(SeveralFiles, AnErrorInARequiredFileHasItsFileAndLine) {
    Write("rooms.lua", "\nlocal x = nil + 1");
    EXPECT_EQ(CheckFile(Write("main.lua", "require 'rooms'")), Lines{"rooms.lua:2 script-error"});
}

TEST_F(SeveralFiles, AFileThatRequiresItselfIsAnError) {
    std::string const path = Write("a.lua", "\nrequire 'a'");
    EXPECT_EQ(CheckFile(path), Lines{"a.lua:2 script-error"});
    EXPECT_EQ(MessageOfFile(path), "a.lua requires itself: a.lua -> a.lua");
}

TEST_F(SeveralFiles, FilesThatRequireOneAnotherAreAnError) {
    Write("b.lua", "\n\nreturn require 'c'");
    Write("c.lua", "local b = require('b')");
    std::string const main = Write("a.lua", "require 'b'");
    EXPECT_EQ(CheckFile(main), Lines{"c.lua:1 script-error"});
    EXPECT_EQ(MessageOfFile(main), "b.lua requires itself: b.lua -> c.lua -> b.lua");
    Write("b.lua", "\nrequire 'a'");
    EXPECT_EQ(CheckFile(main), Lines{"b.lua:2 script-error"});
    EXPECT_EQ(MessageOfFile(main), "a.lua requires itself: a.lua -> b.lua -> a.lua");
}

TEST_F(SeveralFiles, AFileThatIsRequiredTwiceIsLoadedOnce) {
    Write("b.lua", "count = (count or 0) + 1 assert(count == 1) return require 'c'");
    Write("c.lua", "return {}");
    EXPECT_EQ(CheckFile(Write("a.lua", "assert(require 'b' == require 'c') assert(require 'b')\n" + Good)),
              Lines());
}

TEST_F(SeveralFiles, AMissingModuleNamesTheFileBesideTheProject) {
    std::string const path = Write("a.lua", "\nrequire 'plant.rooms'");
    EXPECT_EQ(CheckFile(path), Lines{"a.lua:2 script-error"});
    EXPECT_EQ(MessageOfFile(path), "module 'plant.rooms' not found: there is no file " + folder.Path() +
                                       "/plant/rooms.lua beside the project");
    EXPECT_EQ(MessageOfFile(Write("a.lua", "package.path = 'no/?.lua;?' require 'x'")),
              "module 'x' not found: there is no file no/x.lua");
    EXPECT_EQ(MessageOfFile(Write("a.lua", "package.path = nil require 'x'")), "package.path is not a text");
}

TEST_F(SeveralFiles, AMistakeOfTheCheckInARequiredFileHasItsFileAndLine) {
    Write("rooms.lua",
          start + "{\n{Name='V',\nType='Flaot', ObjectType=1, ObjectNumber=1,\nObjectProperties=99}}}");
    EXPECT_EQ(CheckFile(Write("main.lua", "require 'rooms'")),
              (Lines{"rooms.lua:3 unknown-name", "rooms.lua:4 unknown-name"}));
}

TEST_F(SeveralFiles, AFunctionOfAnotherFileMakesVariablesOfThisOne) {
    Write("tools.lua",
          "return function(name, property) return {Name=name, Type='DataValue', ElementType='Float',\n"
          "ObjectType='analog-input', ObjectNumber=1, ObjectProperties=property} end");
    EXPECT_EQ(CheckFile(Write("main.lua", "local value = require 'tools'\n" + start +
                                              "{\nvalue('T', 'present-value'),\nvalue('V', 'bias')}}")),
              Lines{"main.lua:4 not-decoded"});
}

TEST(SourcePlaces, OfComputedNamesAreThoseOfTheBlock) {
    EXPECT_EQ(Found("local vars = {}\nfor i = 1, 2 do vars[i] = {Name='V' .. i, Type='DataValue', "
                    "ElementType='Float', "
                    "ObjectType='analog-input', ObjectNumber=i, ObjectProperties='bias'} end\n"
                    "BACnet.new{Name='B', Address='1.2.3.4:5', Vars=vars}"),
              (Lines{"not-decoded 3 B.V1 ObjectProperties", "not-decoded 3 B.V2 ObjectProperties"}));
}

TEST(SourcePlaces, AComputedNumberIsNotCompared) {
    EXPECT_EQ(Found("local n = 1 local vars = {\n{Name='V', Type='DataValue', ElementType='Float', "
                    "ObjectType='loop', "
                    "ObjectNumber=1 + n, ObjectProperties='bias'}}\n"
                    "BACnet.new{Name='B', Address='1.2.3.4:5', Vars=vars}"),
              Lines{"not-decoded 2 B.V ObjectProperties"});
}

TEST(SourcePlaces, CommentsAndLongTextsAreNotTables) {
    EXPECT_EQ(Found("--[[ {Name='V'} \n ]] local text = [==[\n{Name='V', [[x]] } ]==] -- {Name='V'\n" +
                    ProjectOf(Local, {"Name = \"V\" ; ['Type']='Float', ObjectType=1,\n ObjectNumber = 0x1, "
                                      "ObjectProperties = 99"})),
              Lines{"unknown-name 6 B.V ObjectProperties"});
}

TEST(SourcePlaces, EqualNamesOfTwoBlocksAreToldApart) {
    std::string const block =
        ", Address='1.2.3.4:5', Vars={\n{" + Variable("V", "Float", "analog-input", 1, "bias") + "}}}\n";
    EXPECT_EQ(Found("BACnet.new{Name='A'" + block + "BACnet.new({Name='B'" + block + ")"),
              (Lines{"not-decoded 2 A.V ObjectProperties", "not-decoded 4 B.V ObjectProperties",
                     "object-polled-twice 4 B.V ObjectNumber"}));
}

// A function of the project that makes a block, in lines 1 to 4.
std::string const Helper =
    "local function block(name, address)\n"
    "    return BACnet.new{Name = name,\n"
    "        Timeout = 5,\n"
    "        Address = address, Vars = {{" +
    Variable("V", "Float", "analog-input", 1) + "}}} end\n";

TEST(SourcePlaces, OfABlockThatAFunctionMakesIsTheCallWithItsName) {
    EXPECT_EQ(Found(Helper + "Task{Name='Chiller'} local unused = {'Pump'}\nblock('Pump', '" + Device +
                    "')\nblock(\n'Chiller', '192.168.1.21:47808')"),
              (Lines{"field-without-effect 3 Pump Timeout", "field-without-effect 3 Chiller Timeout",
                     "shared-task 8 Chiller Task"}));
    EXPECT_EQ(Found(Helper + "Task{Name='a'}\nblock \"Pump\""),
              (Lines{"field-without-effect 3 Pump Timeout", "missing-field 4 Pump Address"}));
    EXPECT_EQ(Found(Helper + "block('P', 'x')\nblock('p', 'x')").back(), "similar-names 6 p Name");
}

TEST(SourcePlaces, OfABlockWhoseNameIsInTwoCallsIsBACnetNew) {
    EXPECT_EQ(Found(Helper + "Set('B', '1') block('A', '" + Device + "')\nblock('B', '192.168.1.21:47808')"),
              (Lines{"shared-task 2 B Task", "field-without-effect 3 A Timeout",
                     "field-without-effect 3 B Timeout", "bad-set 5  "}));
}

TEST(SourcePlaces, OfAVariableThatAFunctionMakesIsTheCallWithItsName) {
    EXPECT_EQ(Found("local vars = {} local function add(name, number)\n"
                    "vars[#vars + 1] = {Name=name, Type='DataValue', ElementType='Float', "
                    "ObjectType='loop', ObjectNumber=number, ObjectProperties='bias'} end\n"
                    "add('V', 1)\nadd('W', 2)\nadd('X' .. 1, 3)\n"
                    "BACnet.new{Name='B', Address='1.2.3.4:5', Vars=vars}"),
              (Lines{"not-decoded 3 B.V ObjectProperties", "not-decoded 4 B.W ObjectProperties",
                     "not-decoded 6 B.X1 ObjectProperties"}));
}

TEST(FindingJson, HasExactlyTheseFields) {
    ProjectReport const report =
        Check("Task{Name='a', Period=0}\n" + ProjectOf(Local, {Variable("V", "Float", "loop", 1, "bias")}));
    ASSERT_EQ(report.findings.size(), 2u);
    EXPECT_EQ(
        FindingJson(report.findings[0]),
        R"({"severity":"error","code":"out-of-range","file":"p.lua","line":1,"block":null,"variable":null,)"
        R"("field":"Period","message":"task: 0 is out of range; allowed is 1 to 86400000: a controller cuts the number, or works as if it were missing",)"
        R"("advice":"Use a number of the range that is allowed."})");
    EXPECT_EQ(
        FindingJson(report.findings[1]),
        R"({"severity":"error","code":"not-decoded","file":"p.lua","line":3,"block":"B","variable":"V",)"
        R"("field":"ObjectProperties","message":"the driver cannot decode bias of loop: it drops every answer of )"
        R"(loop 1, without a fault, and the variable never gets a value","advice":"Remove the variable."})");
}

TEST(FindingText, HasPlaceSeverityCodeAndAdvice) {
    Finding const finding =
        Check(ProjectOf(Local + ", Timeout=5", {Variable("V", "Float", "loop", 1)})).findings.at(0);
    std::string const text =
        "block \"B\": field \"Timeout\": has no effect: the driver always waits 1000 ms for an "
        "answer [field-without-effect]\n    Remove the field.\n";
    EXPECT_EQ(FindingText(finding, false), "p.lua:1: warning: " + text);
    EXPECT_EQ(FindingText(Check("Task{}").findings.at(0), false),
              "p.lua:1: error: task: field \"Name\": missing [missing-field]\n    A controller takes its "
              "default.\n    "
              "Add the field.\n");
    EXPECT_EQ(FindingText(finding, true), "\x1B[1mp.lua:1: \x1B[0m\x1B[33mwarning\x1B[0m: " + text);
}

bool IsInKebabCase(std::string const& name) {
    return name.find_first_not_of("abcdefghijklmnopqrstuvwxyz-") == std::string::npos &&
           name.front() != '-' && name.back() != '-' && name.find("--") == std::string::npos;
}

TEST(FindingCodes, AreInTheOrderOfTheirTableAndUnlike) {
    std::set<std::string> names;
    for (std::size_t i = 0; i < FindingRows().size(); ++i) {
        FindingRow const& row = FindingRows()[i];
        EXPECT_EQ(static_cast<std::size_t>(row.code), i) << row.name;
        EXPECT_TRUE(IsInKebabCase(row.name)) << row.name;
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
    }
    EXPECT_EQ(FindingRows().back().code, FindingCode::UnusedDefine);
}

// The codes of the document's sections, each with its severity.
std::map<std::string, std::string> Sections() {
    std::map<std::string, std::string> sections;
    std::ifstream document(FINDINGS_DOCUMENT);
    for (std::string line; std::getline(document, line);) {
        if (line.compare(0, 5, "### `") != 0) {
            continue;
        }
        std::string const code = line.substr(5, line.size() - 6);
        std::getline(document, line);
        std::getline(document, line);
        EXPECT_TRUE(sections.emplace(code, line.substr(0, line.find(". "))).second) << code;
    }
    return sections;
}

TEST(FindingCodes, HaveASectionEachInTheDocument) {
    std::map<std::string, std::string> codes;
    for (FindingRow const& row : FindingRows()) {
        codes[row.name] = row.severity == Severity::Error ? "Error" : "Warning";
    }
    EXPECT_EQ(Sections(), codes);
}

TEST(Examples, HaveOnlyTheWarningsThatAreTrue) {
    std::string const folder = EXAMPLES_FOLDER;
    EXPECT_EQ(Places(CheckProject(folder + "/first-steps.lua", {}), folder),
              Lines{"first-steps.lua:29 no-quality"});
    EXPECT_EQ(
        Places(CheckProject(folder + "/plant.lua", {}), folder),
        (Lines{"plant.lua:79 priority-on-schedule", "plant.lua:80 priority-on-schedule",
               "plant.lua:97 sign-not-read", "plant.lua:121 shared-task", "plant.lua:124 shared-task"}));
}

}  // namespace
