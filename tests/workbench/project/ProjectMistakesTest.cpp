#include <gtest/gtest.h>

#include "Projects.h"

using namespace test;

namespace {

std::string const Named = R"(Name="AHU", Address="192.168.1.20:47808")";

// The message about a block with these fields, without the common beginning.
std::string InBlock(std::string const& fields, std::string const& variables = Temperature) {
    std::string const message = MistakeIn(Block(fields, variables));
    std::string const start = "p.lua:1: block \"AHU\": ";
    return message.compare(0, start.size(), start) == 0 ? message.substr(start.size()) : message;
}

std::string InVariable(std::string const& fields) {
    std::string const message = InBlock(Named, "{" + fields + "}");
    std::string const start = "variable \"T\": ";
    return message.compare(0, start.size(), start) == 0 ? message.substr(start.size()) : message;
}

class ProjectMistakes : public testing::Test {
    FakeAddIn addIn;
};

TEST_F(ProjectMistakes, AreNotInAGoodProject) {
    EXPECT_EQ(MistakeIn(OneBlock), "loaded");
}

TEST_F(ProjectMistakes, ASyntaxErrorHasItsLine) {
    EXPECT_EQ(MistakeIn("BACnet.new{"), "p.lua:1: unexpected symbol near <eof>");
    EXPECT_EQ(MistakeIn("\n\nlocal = 5"), "p.lua:3: <name> expected near '='");
}

TEST_F(ProjectMistakes, AnErrorOfTheScriptIsReported) {
    EXPECT_EQ(MistakeIn("local x\nx.y = 1"), "p.lua:2: attempt to index a nil value (local 'x')");
    EXPECT_EQ(MistakeIn("error('two\\nlines', 0)"), "p.lua: two\\nlines");
    EXPECT_EQ(MistakeIn("error({})"), "p.lua: the script raised an error that is not a text but a table");
    EXPECT_EQ(MistakeIn("error()"), "p.lua: the script raised an error that is not a text but a nil");
}

TEST_F(ProjectMistakes, AProjectNeedsABlock) {
    EXPECT_EQ(MistakeIn(""), "p.lua: the project has no block; make one with BACnet.new{...}");
    EXPECT_EQ(MistakeIn("Task{Name='air'}"),
              "p.lua: the project has no block; make one with BACnet.new{...}");
}

TEST_F(ProjectMistakes, BlocksTasksAndVariablesAreTables) {
    EXPECT_EQ(MistakeIn("BACnet.new()"), "p.lua:1: block: expected a table, got nil");
    EXPECT_EQ(MistakeIn("BACnet.new(print)"), "p.lua:1: block: expected a table, got a function");
    EXPECT_EQ(MistakeIn("Task 'air'"), "p.lua:1: task: expected a table, got \"air\"");
    EXPECT_EQ(InBlock(Named, "5"), "variable 1: expected a table, got 5");
}

TEST_F(ProjectMistakes, ABlockNeedsAName) {
    EXPECT_EQ(MistakeIn("BACnet.new{}"), "p.lua:1: block: field \"Name\": missing");
    EXPECT_EQ(MistakeIn("BACnet.new{Name=''}"), "p.lua:1: block: field \"Name\": must not be empty");
    EXPECT_EQ(MistakeIn("BACnet.new{Name=7}"), "p.lua:1: block: field \"Name\": expected a text, got 7");
}

TEST_F(ProjectMistakes, AnUnknownFieldIsReported) {
    EXPECT_EQ(InBlock("Name='AHU', Adress='x'"), "field \"Adress\": unknown (did you mean \"Address\"?)");
    EXPECT_EQ(InBlock("Name='AHU', mac='x'"), "field \"mac\": unknown (did you mean \"MAC\"?)");
    EXPECT_EQ(InBlock("Name='AHU', Colour='x'"), "field \"Colour\": unknown");
    EXPECT_EQ(InBlock("Name='AHU', 'x'"), "entry 1 has no field name; write Field = value");
    EXPECT_EQ(InBlock("Name='AHU', ['a\\nb']=1"), "field \"a\\nb\": unknown");
    EXPECT_EQ(InVariable("Name='T', Typ='Float'"), "field \"Typ\": unknown (did you mean \"Type\"?)");
    EXPECT_EQ(InVariable("Name='T', ReadId=1"), "field \"ReadId\": unknown");
}

TEST_F(ProjectMistakes, FieldsOfAControllerAreNotAllowed) {
    EXPECT_EQ(InBlock(Named + ", FaultItemId=7"),
              "field \"FaultItemId\": is for controllers, and the workbench has no variables of a "
              "controller; remove it");
}

TEST_F(ProjectMistakes, TheAddressIsChecked) {
    EXPECT_EQ(InBlock("Name='AHU'"), "field \"Address\": missing");
    EXPECT_EQ(InBlock("Name='AHU', Address=''"), "field \"Address\": must not be empty");
    EXPECT_EQ(InBlock("Name='AHU', Address=5"), "field \"Address\": expected a text, got 5");
    EXPECT_EQ(InBlock("Name='AHU', Address='1.2.3.4:0'"),
              "field \"Address\": \"0\" is not a port from 1 to 65535");
    EXPECT_EQ(InBlock("Name='AHU', Address='1.2.3.4'"),
              "field \"Address\": \"1.2.3.4\" is not an address with a port such as \"192.168.1.20:47808\"");
}

TEST_F(ProjectMistakes, TheMacIsChecked) {
    EXPECT_EQ(
        InBlock(Named + ", MAC='10:20:30'"),
        "field \"MAC\": \"10:20:30\" is not a device address such as \"192.168.1.20:47808\", \"10:20\" or "
        "\"5\"");
    EXPECT_EQ(InBlock(Named + ", MAC=5"), "field \"MAC\": expected a text, got 5");
    EXPECT_EQ(MistakeIn(Block(Named + ", MAC='', NetworkNumber=5")), "loaded");
}

TEST_F(ProjectMistakes, TheNumbersOfABlockAreChecked) {
    EXPECT_EQ(InBlock(Named + ", CountRepeat=0"),
              "field \"CountRepeat\": 0 is out of range; allowed is 1 to 65535");
    EXPECT_EQ(InBlock(Named + ", CountRepeat='3'"),
              "field \"CountRepeat\": expected a whole number, got \"3\"");
    EXPECT_EQ(InBlock(Named + ", NetworkNumber=65536"),
              "field \"NetworkNumber\": 65536 is out of range; allowed is 0 to 65535");
    EXPECT_EQ(InBlock(Named + ", Timeout=1.5"), "field \"Timeout\": expected a whole number, got 1.5");
    EXPECT_EQ(InBlock(Named + ", Timeout=0/0"), "field \"Timeout\": expected a whole number, got nan");
    EXPECT_EQ(InBlock(Named + ", Priority=17"), "field \"Priority\": 17 is out of range; allowed is 0 to 16");
    EXPECT_EQ(InBlock(Named + ", ExecuteOnSlave=1"),
              "field \"ExecuteOnSlave\": expected true or false, got 1");
    EXPECT_EQ(MistakeIn(Block(Named + ", Timeout=2000.0, AddressNumber=-5")), "loaded");
}

TEST_F(ProjectMistakes, TheWriteConditionIsChecked) {
    EXPECT_EQ(InBlock(Named + ", WriteCondition='Onchange'"),
              "field \"WriteCondition\": \"Onchange\" is not a write condition; allowed are OnChange, Always "
              "and OnTrigger (did you mean \"OnChange\"?)");
    EXPECT_EQ(InBlock(Named + ", WriteCondition=3"),
              "field \"WriteCondition\": 3 is out of range; allowed is 0 to 2");
    EXPECT_EQ(MistakeIn(Block(Named + ", WriteCondition='OnTrigger'")), "loaded");
}

TEST_F(ProjectMistakes, VarsIsAListOfVariables) {
    EXPECT_EQ(InBlock(Named, ""), "field \"Vars\": expected a list of variables, got an empty table");
    EXPECT_EQ(MistakeIn("BACnet.new{" + Named + "}"), "p.lua:1: block \"AHU\": field \"Vars\": missing");
    EXPECT_EQ(MistakeIn("BACnet.new{" + Named + ", Vars=5}"),
              "p.lua:1: block \"AHU\": field \"Vars\": expected a list of variables, got 5");
    EXPECT_EQ(InBlock(Named, "T=" + Temperature),
              "field \"Vars\": key \"T\" is not an index of the list; remove other keys and gaps");
    EXPECT_EQ(InBlock(Named, Temperature + ", [5]=1"),
              "p.lua:1: the keys of a table must be names or 1, 2, 3 ..., not 5");
}

TEST_F(ProjectMistakes, AVariableNeedsAName) {
    EXPECT_EQ(InBlock(Named, "{}"), "variable 1: field \"Name\": missing");
    EXPECT_EQ(InBlock(Named, Temperature + ", {Type='Float'}"), "variable 2: field \"Name\": missing");
}

TEST_F(ProjectMistakes, TypesAreChecked) {
    EXPECT_EQ(InVariable("Name='T'"), "field \"Type\": missing");
    EXPECT_EQ(InVariable("Name='T', Type='Flaot'"),
              "field \"Type\": \"Flaot\" is not a type (did you mean \"Float\"?)");
    EXPECT_EQ(InVariable("Name='T', Type=14"),
              "field \"Type\": 14 is not the number of a type that variables can have");
    EXPECT_EQ(InVariable("Name='T', Type=26"), "field \"Type\": 26 is out of range; allowed is 0 to 25");
    EXPECT_EQ(InVariable("Name='T', Type=true"), "field \"Type\": expected a whole number, got true");
    EXPECT_EQ(InVariable("Name='T', Type='DataValue'"),
              "field \"ElementType\": missing; the type DataValue needs it");
    EXPECT_EQ(InVariable("Name='T', Type='Float', ElementType='Float'"),
              "field \"ElementType\": is allowed only with the type DataValue");
    EXPECT_EQ(InVariable("Name='T', Type=23, ElementType=23"),
              "field \"ElementType\": a DataValue cannot contain a DataValue");
}

TEST_F(ProjectMistakes, ObjectTypesAndPropertiesAreChecked) {
    std::string const start = "Name='T', Type='Float', ";
    EXPECT_EQ(InVariable(start), "field \"ObjectType\": missing");
    EXPECT_EQ(
        InVariable(start + "ObjectType='analog-inptu'"),
        "field \"ObjectType\": \"analog-inptu\" is not an object type (did you mean \"analog-input\"?)");
    EXPECT_EQ(
        InVariable(start + "ObjectType='device'"),
        "field \"ObjectType\": \"device\" is not an object type; \"dorvel-workbench names\" lists them");
    EXPECT_EQ(InVariable(start + "ObjectType=1000"),
              "field \"ObjectType\": 1000 is not the code of an object type; \"dorvel-workbench names\" "
              "lists them");
    EXPECT_EQ(InVariable(start + "ObjectType={}"),
              "field \"ObjectType\": expected a name or a code, got a table");
    EXPECT_EQ(InVariable(start + "ObjectType=1"), "field \"ObjectProperties\": missing");
    EXPECT_EQ(
        InVariable(start + "ObjectType=1, ObjectProperties='value'"),
        "field \"ObjectProperties\": \"value\" is not a property; \"dorvel-workbench names\" lists them");
    EXPECT_EQ(InVariable(start + "ObjectType=1, ObjectProperties=-1"),
              "field \"ObjectProperties\": -1 is not the code of a property; \"dorvel-workbench names\" "
              "lists them");
}

TEST_F(ProjectMistakes, TheObjectNumberIsChecked) {
    std::string const start = "Name='T', Type='Float', ObjectType=1, ObjectProperties=0";
    EXPECT_EQ(InVariable(start), "field \"ObjectNumber\": missing");
    EXPECT_EQ(InVariable(start + ", ObjectNumber=-1"),
              "field \"ObjectNumber\": -1 is out of range; allowed is 0 to 4194302");
    EXPECT_EQ(InVariable(start + ", ObjectNumber=4194303"),
              "field \"ObjectNumber\": 4194303 is out of range; allowed is 0 to 4194302");
    EXPECT_EQ(InVariable(start + ", ObjectNumber=4194302"), "loaded");
}

TEST_F(ProjectMistakes, NamesAreUnique) {
    EXPECT_EQ(MistakeIn(OneBlock + OneBlock),
              "p.lua:2: block \"AHU\": field \"Name\": the name is already taken; each block needs its own");
    EXPECT_EQ(MistakeIn("Task{Name='a'}\nTask{Name='a'}"),
              "p.lua:2: task \"a\": field \"Name\": the name is already taken; each task needs its own");
    EXPECT_EQ(
        MistakeIn("BACnet.new{" + Named + ", Vars={\n" + Temperature + ",\n" + Temperature + "}}"),
        "p.lua:3: block \"AHU\": variable \"T\": field \"Name\": the name is already taken; each variable "
        "of a block needs its own");
}

TEST_F(ProjectMistakes, TasksAreChecked) {
    EXPECT_EQ(MistakeIn("Task{}"), "p.lua:1: task: field \"Name\": missing");
    EXPECT_EQ(MistakeIn("Task{Name='a', Period=0}"),
              "p.lua:1: task: field \"Period\": 0 is out of range; allowed is 1 to 86400000");
    EXPECT_EQ(MistakeIn("Task{Name='a', Cycle=5}"), "p.lua:1: task: field \"Cycle\": unknown");
    EXPECT_EQ(InBlock(Named + ", Task='air'"), "field \"Task\": \"air\" is not a task of the project");
    EXPECT_EQ(InBlock(Named + ", Task=''"), "field \"Task\": must not be empty");
    EXPECT_EQ(MistakeIn("Task{Name='air'}\n" + Block(Named + ", Task='ari'")),
              "p.lua:2: block \"AHU\": field \"Task\": \"ari\" is not a task of the project (did you mean "
              "\"air\"?)");
    EXPECT_EQ(MistakeIn(Block(Named + ", Task='air'") + "Task{Name='air'}"), "loaded");
}

TEST_F(ProjectMistakes, AMistakeInAVariableHasItsLine) {
    std::string const bad = "{Name='U', Type='Float', ObjectType='x'}";
    EXPECT_EQ(MistakeIn("BACnet.new{" + Named + ",\nVars={\n" + Temperature + ",\n" + bad + "}}"),
              "p.lua:4: block \"AHU\": variable \"U\": field \"ObjectType\": \"x\" is not an object type; "
              "\"dorvel-workbench names\" lists them");
    EXPECT_EQ(MistakeIn("local vars={\n" + bad + "}\nBACnet.new{" + Named + ", Vars=vars}"),
              "p.lua:2: block \"AHU\": variable \"U\": field \"ObjectType\": \"x\" is not an object type; "
              "\"dorvel-workbench names\" lists them");
}

TEST_F(ProjectMistakes, OfTheDriverAreReportedWithTheBlock) {
    FakeAddIn refusing;
    refusing.onInited = [](FakeDriver&) { throw std::invalid_argument("stoul"); };
    EXPECT_EQ(MistakeIn("\n" + OneBlock), "p.lua:2: block \"AHU\": stoul");
}

TEST_F(ProjectMistakes, LongTextsAreCut) {
    EXPECT_EQ(InVariable("Name='T', Type='Float', ObjectType=('x'):rep(1000)"),
              "field \"ObjectType\": \"" + std::string(60, 'x') +
                  "...\" is not an object type; \"dorvel-workbench names\" lists them");
}

TEST_F(ProjectMistakes, LongPathsAreShortened) {
    std::string const path = std::string(80, 'd') + "/project.lua";
    workbench::LoadedProject project(path, {});
    try {
        project.Load(workbench::SourceText("Task{}"));
        FAIL();
    } catch (workbench::ProjectError const& mistake) {
        std::string const place = "..." + path.substr(path.size() - 56) + ":1: ";
        EXPECT_EQ(mistake.what(), place + "task: field \"Name\": missing");
    }
}

TEST_F(ProjectMistakes, AFileThatCannotBeReadIsReported) {
    try {
        workbench::SourceText::FromFile("no/such/project.lua");
        FAIL();
    } catch (workbench::ProjectError const& mistake) {
        EXPECT_STREQ(mistake.what(), "no/such/project.lua: cannot be read: No such file or directory");
    }
    EXPECT_THROW(workbench::SourceText::FromFile("."), workbench::ProjectError);
    EXPECT_THROW(workbench::SourceText::FromFile("/dev/zero"), workbench::ProjectError);
}

}  // namespace
