#include <gtest/gtest.h>

#include "Projects.h"

using namespace test;

namespace {

std::string const Named = R"(Name="AHU", Address="192.168.1.20:47808")";

// The message about a block of these fields, with the beginning that all have in common taken away.
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

TEST_F(ProjectMistakes, NoneInAGoodProject) {
    EXPECT_EQ(MistakeIn(OneBlock), "loaded");
}

TEST_F(ProjectMistakes, SyntaxError) {
    EXPECT_EQ(MistakeIn("BACnet.new{"), "p.lua:1: unexpected symbol near <eof>");
    EXPECT_EQ(MistakeIn("\n\nlocal = 5"), "p.lua:3: <name> expected near '='");
}

TEST_F(ProjectMistakes, ErrorOfTheScript) {
    EXPECT_EQ(MistakeIn("local x\nx.y = 1"), "p.lua:2: attempt to index a nil value (local 'x')");
    EXPECT_EQ(MistakeIn("error('two\\nlines', 0)"), "p.lua: two\\nlines");
    EXPECT_EQ(MistakeIn("error({})"), "p.lua: the error is a table");
    EXPECT_EQ(MistakeIn("error()"), "p.lua: the error is a nil");
}

TEST_F(ProjectMistakes, NoBlock) {
    EXPECT_EQ(MistakeIn(""), "p.lua: there is no block; BACnet.new{...} makes one");
    EXPECT_EQ(MistakeIn("Task{Name='air'}"), "p.lua: there is no block; BACnet.new{...} makes one");
}

TEST_F(ProjectMistakes, NoTable) {
    EXPECT_EQ(MistakeIn("BACnet.new()"), "p.lua:1: block: a table is wanted, not nil");
    EXPECT_EQ(MistakeIn("BACnet.new(print)"), "p.lua:1: block: a table is wanted, not a function");
    EXPECT_EQ(MistakeIn("Task 'air'"), "p.lua:1: task: a table is wanted, not \"air\"");
    EXPECT_EQ(InBlock(Named, "5"), "variable 1: a table is wanted, not 5");
}

TEST_F(ProjectMistakes, BlockWithoutAName) {
    EXPECT_EQ(MistakeIn("BACnet.new{}"), "p.lua:1: block: field \"Name\": missing");
    EXPECT_EQ(MistakeIn("BACnet.new{Name=''}"), "p.lua:1: block: field \"Name\": empty");
    EXPECT_EQ(MistakeIn("BACnet.new{Name=7}"), "p.lua:1: block: field \"Name\": a text is wanted, not 7");
}

TEST_F(ProjectMistakes, UnknownField) {
    EXPECT_EQ(InBlock("Name='AHU', Adress='x'"), "field \"Adress\": unknown (did you mean \"Address\"?)");
    EXPECT_EQ(InBlock("Name='AHU', mac='x'"), "field \"mac\": unknown (did you mean \"MAC\"?)");
    EXPECT_EQ(InBlock("Name='AHU', Colour='x'"), "field \"Colour\": unknown");
    EXPECT_EQ(InBlock("Name='AHU', 'x'"), "entry 1 has no field name");
    EXPECT_EQ(InBlock("Name='AHU', ['a\\nb']=1"), "field \"a\\nb\": unknown");
    EXPECT_EQ(InVariable("Name='T', Typ='Float'"), "field \"Typ\": unknown (did you mean \"Type\"?)");
    EXPECT_EQ(InVariable("Name='T', ReadId=1"), "field \"ReadId\": unknown");
}

TEST_F(ProjectMistakes, FieldsOfAController) {
    EXPECT_EQ(InBlock(Named + ", FaultItemId=7"),
              "field \"FaultItemId\": names a variable of a controller, of which there is none here");
}

TEST_F(ProjectMistakes, Address) {
    EXPECT_EQ(InBlock("Name='AHU'"), "field \"Address\": missing");
    EXPECT_EQ(InBlock("Name='AHU', Address=''"), "field \"Address\": empty");
    EXPECT_EQ(InBlock("Name='AHU', Address=5"), "field \"Address\": a text is wanted, not 5");
    EXPECT_EQ(InBlock("Name='AHU', Address='1.2.3.4:0'"),
              "field \"Address\": \"0\" is no port from 1 to 65535");
    EXPECT_EQ(InBlock("Name='AHU', Address='1.2.3.4'"),
              "field \"Address\": \"1.2.3.4\" is no address with a port such as \"192.168.1.20:47808\"");
}

TEST_F(ProjectMistakes, Mac) {
    EXPECT_EQ(InBlock(Named + ", MAC='10:20:30'"),
              "field \"MAC\": \"10:20:30\" is no device address such as \"192.168.1.20:47808\", \"10:20\" or "
              "\"5\"");
    EXPECT_EQ(InBlock(Named + ", MAC=5"), "field \"MAC\": a text is wanted, not 5");
    EXPECT_EQ(MistakeIn(Block(Named + ", MAC='', NetworkNumber=5")), "loaded");
}

TEST_F(ProjectMistakes, NumbersOfABlock) {
    EXPECT_EQ(InBlock(Named + ", CountRepeat=0"), "field \"CountRepeat\": 0 is not within 1..65535");
    EXPECT_EQ(InBlock(Named + ", CountRepeat='3'"),
              "field \"CountRepeat\": a whole number is wanted, not \"3\"");
    EXPECT_EQ(InBlock(Named + ", NetworkNumber=65536"),
              "field \"NetworkNumber\": 65536 is not within 0..65535");
    EXPECT_EQ(InBlock(Named + ", Timeout=1.5"), "field \"Timeout\": a whole number is wanted, not 1.5");
    EXPECT_EQ(InBlock(Named + ", Timeout=0/0"), "field \"Timeout\": a whole number is wanted, not nan");
    EXPECT_EQ(InBlock(Named + ", Priority=17"), "field \"Priority\": 17 is not within 0..16");
    EXPECT_EQ(InBlock(Named + ", ExecuteOnSlave=1"),
              "field \"ExecuteOnSlave\": true or false is wanted, not 1");
    EXPECT_EQ(MistakeIn(Block(Named + ", Timeout=2000.0, AddressNumber=-5")), "loaded");
}

TEST_F(ProjectMistakes, WriteCondition) {
    EXPECT_EQ(InBlock(Named + ", WriteCondition='Onchange'"),
              "field \"WriteCondition\": \"Onchange\" is no write condition (did you mean \"OnChange\"?)");
    EXPECT_EQ(InBlock(Named + ", WriteCondition=3"), "field \"WriteCondition\": 3 is not within 0..2");
    EXPECT_EQ(MistakeIn(Block(Named + ", WriteCondition='OnTrigger'")), "loaded");
}

TEST_F(ProjectMistakes, Vars) {
    EXPECT_EQ(InBlock(Named, ""), "field \"Vars\": a list of variables is wanted, not an empty table");
    EXPECT_EQ(MistakeIn("BACnet.new{" + Named + "}"), "p.lua:1: block \"AHU\": field \"Vars\": missing");
    EXPECT_EQ(MistakeIn("BACnet.new{" + Named + ", Vars=5}"),
              "p.lua:1: block \"AHU\": field \"Vars\": a list of variables is wanted, not 5");
    EXPECT_EQ(InBlock(Named, "T=" + Temperature), "field \"Vars\": entry \"T\" is not part of the list");
    EXPECT_EQ(InBlock(Named, Temperature + ", [5]=1"), "field \"Vars\": entry 5 is not part of the list");
}

TEST_F(ProjectMistakes, VariableWithoutAName) {
    EXPECT_EQ(InBlock(Named, "{}"), "variable 1: field \"Name\": missing");
    EXPECT_EQ(InBlock(Named, Temperature + ", {Type='Float'}"), "variable 2: field \"Name\": missing");
}

TEST_F(ProjectMistakes, Types) {
    EXPECT_EQ(InVariable("Name='T'"), "field \"Type\": missing");
    EXPECT_EQ(InVariable("Name='T', Type='Flaot'"),
              "field \"Type\": \"Flaot\" is no type (did you mean \"Float\"?)");
    EXPECT_EQ(InVariable("Name='T', Type=14"),
              "field \"Type\": 14 is the number of no type that the runtime stores");
    EXPECT_EQ(InVariable("Name='T', Type=26"), "field \"Type\": 26 is not within 0..25");
    EXPECT_EQ(InVariable("Name='T', Type=true"), "field \"Type\": a whole number is wanted, not true");
    EXPECT_EQ(InVariable("Name='T', Type='DataValue'"),
              "field \"ElementType\": missing, the type DataValue needs it");
    EXPECT_EQ(InVariable("Name='T', Type='Float', ElementType='Float'"),
              "field \"ElementType\": goes with the type DataValue only");
    EXPECT_EQ(InVariable("Name='T', Type=23, ElementType=23"),
              "field \"ElementType\": a DataValue inside a DataValue cannot be");
}

TEST_F(ProjectMistakes, Objects) {
    std::string const start = "Name='T', Type='Float', ";
    EXPECT_EQ(InVariable(start), "field \"ObjectType\": missing");
    EXPECT_EQ(InVariable(start + "ObjectType='analog-inptu'"),
              "field \"ObjectType\": \"analog-inptu\" is no object type (did you mean \"analog-input\"?)");
    EXPECT_EQ(InVariable(start + "ObjectType='device'"),
              "field \"ObjectType\": \"device\" is no object type");
    EXPECT_EQ(InVariable(start + "ObjectType=23"), "field \"ObjectType\": 23 is the code of no object type");
    EXPECT_EQ(InVariable(start + "ObjectType={}"),
              "field \"ObjectType\": a name or a code is wanted, not a table");
    EXPECT_EQ(InVariable(start + "ObjectType=1"), "field \"ObjectProperties\": missing");
    EXPECT_EQ(InVariable(start + "ObjectType=1, ObjectProperties='value'"),
              "field \"ObjectProperties\": \"value\" is no property");
    EXPECT_EQ(InVariable(start + "ObjectType=1, ObjectProperties=-1"),
              "field \"ObjectProperties\": -1 is the code of no property");
}

TEST_F(ProjectMistakes, ObjectNumber) {
    std::string const start = "Name='T', Type='Float', ObjectType=1, ObjectProperties=0";
    EXPECT_EQ(InVariable(start), "field \"ObjectNumber\": missing");
    EXPECT_EQ(InVariable(start + ", ObjectNumber=-1"), "field \"ObjectNumber\": -1 is not within 0..4194302");
    EXPECT_EQ(InVariable(start + ", ObjectNumber=4194303"),
              "field \"ObjectNumber\": 4194303 is not within 0..4194302");
    EXPECT_EQ(InVariable(start + ", ObjectNumber=4194302"), "loaded");
}

TEST_F(ProjectMistakes, NamesThatAreTaken) {
    EXPECT_EQ(MistakeIn(OneBlock + OneBlock), "p.lua:2: block \"AHU\": there is another one of that name");
    EXPECT_EQ(MistakeIn("Task{Name='a'}\nTask{Name='a'}"),
              "p.lua:2: task \"a\": there is another one of that name");
    EXPECT_EQ(MistakeIn("BACnet.new{" + Named + ", Vars={\n" + Temperature + ",\n" + Temperature + "}}"),
              "p.lua:3: block \"AHU\": variable \"T\": there is another one of that name");
}

TEST_F(ProjectMistakes, Tasks) {
    EXPECT_EQ(MistakeIn("Task{}"), "p.lua:1: task: field \"Name\": missing");
    EXPECT_EQ(MistakeIn("Task{Name='a', Period=0}"),
              "p.lua:1: task: field \"Period\": 0 is not within 1..86400000");
    EXPECT_EQ(MistakeIn("Task{Name='a', Cycle=5}"), "p.lua:1: task: field \"Cycle\": unknown");
    EXPECT_EQ(InBlock(Named + ", Task='air'"), "field \"Task\": \"air\" is no task");
    EXPECT_EQ(InBlock(Named + ", Task=''"), "field \"Task\": empty");
    EXPECT_EQ(MistakeIn("Task{Name='air'}\n" + Block(Named + ", Task='ari'")),
              "p.lua:2: block \"AHU\": field \"Task\": \"ari\" is no task (did you mean \"air\"?)");
    EXPECT_EQ(MistakeIn(Block(Named + ", Task='air'") + "Task{Name='air'}"), "loaded");
}

TEST_F(ProjectMistakes, TheLineIsThatOfTheVariable) {
    std::string const bad = "{Name='U', Type='Float', ObjectType='x'}";
    EXPECT_EQ(MistakeIn("BACnet.new{" + Named + ",\nVars={\n" + Temperature + ",\n" + bad + "}}"),
              "p.lua:4: block \"AHU\": variable \"U\": field \"ObjectType\": \"x\" is no object type");
    EXPECT_EQ(MistakeIn("local vars={\n" + bad + "}\nBACnet.new{" + Named + ", Vars=vars}"),
              "p.lua:3: block \"AHU\": variable \"U\": field \"ObjectType\": \"x\" is no object type");
}

TEST_F(ProjectMistakes, OfTheDriver) {
    FakeAddIn refusing;
    refusing.onInited = [](FakeDriver&) { throw std::invalid_argument("stoul"); };
    EXPECT_EQ(MistakeIn("\n" + OneBlock), "p.lua:2: block \"AHU\": stoul");
}

TEST_F(ProjectMistakes, LongTextsAreCut) {
    EXPECT_EQ(InVariable("Name='T', Type='Float', ObjectType=('x'):rep(1000)"),
              "field \"ObjectType\": \"" + std::string(60, 'x') + "...\" is no object type");
}

TEST_F(ProjectMistakes, LongPathsStayPlaces) {
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

TEST_F(ProjectMistakes, FilesThatCannotBeRead) {
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
