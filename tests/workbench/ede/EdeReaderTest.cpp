#include <gtest/gtest.h>

#include "EdeImport.h"
#include "EdeTexts.h"

using standard::DatumKind;
using standard::PropertyId;
using test::ImportOf;
using test::LinesOf;
using workbench::DeviceRecord;
using workbench::EdeFile;
using workbench::EdeFiles;
using workbench::EdeImport;
using workbench::ObjectRecord;

namespace {

constexpr char const* States =
    "#Reference Number;Inactive-Text;Active-Text\r\n4;off;on\r\n7;stop;manual;automatic;;\r\n";

std::vector<ObjectRecord> const& ObjectsOf(EdeImport const& import) {
    return import.inventory.devices.at(0).objects;
}

double RealOf(ObjectRecord const& object, PropertyId property) {
    auto const* const value = object.Value(property);
    return value && value->kind == DatumKind::Real ? value->real : -999;
}

}  // namespace

TEST(EdeReader, MakesAnObjectOfEveryColumn) {
    EdeImport const import =
        ImportOf("K1;2001;AHU Temp;0;7;Supply air;21,5;-50;150;N;Y;80.5;-10;;62;a/b;3\n");
    EXPECT_EQ(LinesOf(import), "");
    ASSERT_EQ(import.inventory.devices.size(), 1u);
    DeviceRecord const& device = import.inventory.devices[0];
    EXPECT_EQ(device.Instance(), 2001u);
    EXPECT_FALSE(device.peer);
    ASSERT_EQ(device.objects.size(), 1u);
    ObjectRecord const& object = device.objects[0];
    EXPECT_EQ(object.id, (standard::ObjectId{0, 7}));
    EXPECT_EQ(NameOf(object), "AHU Temp");
    EXPECT_EQ(TextOf(object, PropertyId::Description), "Supply air");
    EXPECT_EQ(RealOf(object, PropertyId::Min_Pres_Value), -50);
    EXPECT_EQ(RealOf(object, PropertyId::Max_Pres_Value), 150);
    EXPECT_EQ(RealOf(object, PropertyId::High_Limit), 80.5);
    EXPECT_EQ(RealOf(object, PropertyId::Low_Limit), -10);
    EXPECT_EQ(UnitsOf(object), 62u);
    EXPECT_EQ(NumberOf(object, PropertyId::Notification_Class), 3u);
    // An input has no Relinquish_Default.
    std::map<std::string, std::string> const listed{{"keyname", "K1"},
                                                    {"present-value-default", "21,5"},
                                                    {"settable", "N"},
                                                    {"supports COV", "Y"},
                                                    {"vendor-specific-address", "a/b"}};
    EXPECT_EQ(object.listed, listed);
}

TEST(EdeReader, GivesACommandableObjectItsDefault) {
    EdeImport const import = ImportOf("K;1;A;1;1;;21,5\nK;1;B;4;1;;1\nK;1;C;14;1;;2\nK;1;D;1;2;;warm\n");
    auto const& objects = ObjectsOf(import);
    EXPECT_EQ(RealOf(objects[0], PropertyId::Relinquish_Default), 21.5);
    EXPECT_EQ(NumberOf(objects[1], PropertyId::Relinquish_Default), 1u);
    EXPECT_EQ(NumberOf(objects[2], PropertyId::Relinquish_Default), 2u);
    EXPECT_EQ(objects[3].listed.at("present-value-default"), "warm");
    EXPECT_EQ(LinesOf(import),
              "p_EDE.csv:5: column 7 (present-value-default): \"warm\" is not a Real; kept as a text: value "
              "not used\n");
}

TEST(EdeReader, GivesStateTextsByReference) {
    EdeImport const import =
        ImportOf("K;1;A;3;1;;;;;;;;;4\nK;1;B;14;1;;automatic;1;4;;;;;7\nK;1;C;19;1;;;;2;;;;;7\n", States);
    auto const& objects = ObjectsOf(import);
    EXPECT_EQ(StateTextsOf(objects[0]), (std::vector<std::string>{"off", "on"}));
    EXPECT_EQ(TextOf(objects[0], PropertyId::Inactive_Text), "off");
    EXPECT_EQ(StateTextsOf(objects[1]), (std::vector<std::string>{"stop", "manual", "automatic"}));
    EXPECT_EQ(NumberOf(objects[1], PropertyId::Number_Of_States), 4u);
    EXPECT_EQ(NumberOf(objects[1], PropertyId::Relinquish_Default), 3u);
    EXPECT_EQ(LinesOf(import),
              "p_EDE.csv:4: column 9 (max-present-value): 2 is less than the number of state texts, which is "
              "3: value not used\n");
}

TEST(EdeReader, TakesStateTextsFromTheRow) {
    EdeImport const import =
        ImportOf("K;1;A;3;1;;;;;;;;;off|on\nK;1;B;19;1;;;;;;;;;\"1=a;2=b;3=c\"\nK;1;C;5;1;;;;;;;;;a/b/c\n");
    auto const& objects = ObjectsOf(import);
    EXPECT_EQ(StateTextsOf(objects[0]), (std::vector<std::string>{"off", "on"}));
    EXPECT_EQ(StateTextsOf(objects[1]), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(StateTextsOf(objects[2]), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(LinesOf(import),
              "p_EDE.csv:4: column 14 (state-text-reference): a binary object has two states; the texts "
              "after the second are left out: value not used\n");
}

TEST(EdeReader, TakesStateTextsFromColumnsOfTheirOwn) {
    EdeImport const import = workbench::ReadEde(
        {{"p", "device;object-type;instance;Text 2;Text 1;Text 3\n1;19;1;b;a;c\n1;3;1;on;off;\n"},
         {},
         {},
         {}});
    EXPECT_EQ(LinesOf(import),
              "p:2: column 3 (object-name): is empty; an object has a name\n"
              "p:3: column 3 (object-name): is empty; an object has a name\n");
    EXPECT_EQ(StateTextsOf(ObjectsOf(import)[0]), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(StateTextsOf(ObjectsOf(import)[1]), (std::vector<std::string>{"off", "on"}));
}

TEST(EdeReader, TakesStateTextsFromTheColumnsOfTheirStates) {
    std::string const headings =
        "device;object-type;instance;object-name;inactive-text;active-text;text 1;text 2;text 4\n";
    EdeImport const import = workbench::ReadEde(
        {{"p", headings + "1;19;1;A;;;a;b;d\n1;3;1;B;off;on;;;\n1;3;2;C;off;on;off;1;\n1;0;1;D;x\n"},
         {},
         {},
         {}});
    auto const& objects = ObjectsOf(import);
    EXPECT_EQ(StateTextsOf(objects[0]), (std::vector<std::string>{"a", "b", "", "d"}));
    EXPECT_EQ(StateTextsOf(objects[1]), (std::vector<std::string>{"off", "on"}));
    EXPECT_EQ(StateTextsOf(objects[2]), (std::vector<std::string>{"off", "on"}));
    EXPECT_EQ(
        LinesOf(import),
        "p:4: column 8 (text 2): \"1\" is a second text of state 2: value not used\n"
        "p:5: column 5 (inactive-text): \"x\" is the text of a state, which objects of this type do not "
        "have: value not used\n");
}

TEST(EdeReader, ReportsTextsOfColumnsBesideAReference) {
    EdeFiles files{{"p",
                    "device;object-type;instance;object-name;state-text-reference;text 1\n"
                    "1;3;1;A;4;closed\n"},
                   {},
                   {},
                   {}};
    files.stateTexts = EdeFile{"s", States};
    EXPECT_EQ(
        LinesOf(ReadEde(files)),
        "p:2: column 6 (text 1): \"closed\" is left out, because the texts of the reference are others: "
        "value not used\n");
}

TEST(EdeReader, ReportsReferencesThatHaveNoTexts) {
    EXPECT_EQ(LinesOf(ImportOf("K;1;A;3;1;;;;;;;;;9\nK;1;B;3;2;;;;;;;;;0\n", States)),
              "p_EDE.csv:2: column 14 (state-text-reference): p_StateTexts.csv has no row with the number 9: "
              "value not used\n");
    EXPECT_EQ(
        LinesOf(ImportOf("K;1;A;3;1;;;;;;;;;9\n")),
        "p_EDE.csv:2: column 14 (state-text-reference): there is no file of state texts with the number "
        "9: value not used\n");
    EXPECT_EQ(LinesOf(ImportOf("K;1;A;3;1;;;;;;;;;xyz\n")),
              "p_EDE.csv:2: column 14 (state-text-reference): \"xyz\" is not a reference; allowed are the "
              "number of a row of the state texts, and texts with a \"|\" between them: value not used\n");
}

TEST(EdeReader, ReadsUnitsByCodeNameAndText) {
    EdeImport const import = ImportOf(
        "K;1;A;0;1;;;;;;;;;;62\nK;1;B;0;2;;;;;;;;;;Degrees Celsius\nK;1;C;0;3;;;;;;;;;;grad\n"
        "K;1;D;0;4;;;;;;;;;;furlong\nK;1;E;0;5;;;;;;;;;;300\nK;1;F;12;1;;;;;;;;;;98\nK;1;G;3;1;;;;;;;;;;95\n",
        "", "#Code;Text\n62;Grad\n300;Nm3/h\n");
    auto const& objects = ObjectsOf(import);
    EXPECT_EQ(UnitsOf(objects[0]), 62u);
    EXPECT_EQ(UnitsOf(objects[1]), 62u);
    EXPECT_EQ(UnitsOf(objects[2]), 62u);
    EXPECT_EQ(UnitsOf(objects[3]), std::nullopt);
    EXPECT_EQ(objects[3].listed.at("unit-code"), "furlong");
    EXPECT_EQ(UnitsOf(objects[4]), 300u);
    EXPECT_EQ(objects[4].listed.at("unit-text"), "Nm3/h");
    EXPECT_EQ(NumberOf(objects[5], PropertyId::Output_Units), 98u);
    // A binary object has no unit, and 95 is "no units".
    EXPECT_EQ(objects[6].listed.count("unit-code"), 0u);
    EXPECT_EQ(
        LinesOf(import),
        "p_EDE.csv:5: column 15 (unit-code): \"furlong\" is not a unit of the standard: kept as a text\n");
}

TEST(EdeReader, TakesADashForNoUnit) {
    EdeImport const import = ImportOf("K;1;A;0;1;;;;;;;;;;-\nK;1;B;0;2;;;;;;;;;;--\n");
    EXPECT_EQ(LinesOf(import), "");
    EXPECT_EQ(ObjectsOf(import)[0].listed.count("unit-code"), 0u);
}

TEST(EdeReader, ReadsObjectTypesByNumberNameAndAbbreviation) {
    EdeImport const import = ImportOf(
        "K;1;A;Analog Input;1\nK;1;B;multi_state_value;1\nK;1;C;BO;1\nK;1;D;Meter;1\nK;1;E;130;2\n"
        "K;1;F;thing;1\nK;1;G;1024;1\n",
        "", "", "130;Meter\n");
    auto const& objects = ObjectsOf(import);
    ASSERT_EQ(objects.size(), 5u);
    EXPECT_EQ(objects[0].id.type, 0);
    EXPECT_EQ(objects[1].id.type, 19);
    EXPECT_EQ(objects[2].id.type, 4);
    EXPECT_EQ(objects[3].id.type, 130);
    EXPECT_EQ(objects[4].listed.at("object-type-text"), "Meter");
    EXPECT_EQ(
        LinesOf(import),
        "p_EDE.csv:7: column 4 (object-type): \"thing\" is not an object type; allowed are its number, 0 "
        "to 1023, and its name: row not used\n"
        "p_EDE.csv:8: column 4 (object-type): \"1024\" is not an object type; allowed are its number, 0 "
        "to 1023, and its name: row not used\n");
}

TEST(EdeReader, ReportsEveryRowThatItDoesNotUse) {
    EdeImport const import =
        ImportOf("K;x;A;0;1\nK;1;A;0;4194303\nK;1;A;0\nK;1;A;0;1\nK;1;B;0;1\nK;2;D;8;1\n");
    EXPECT_EQ(
        LinesOf(import),
        "p_EDE.csv:2: column 2 (device obj.-instance): \"x\" is not an instance; allowed is 0 to "
        "4194302: row not used\n"
        "p_EDE.csv:3: column 5 (object-instance): \"4194303\" is not an instance; allowed is 0 to "
        "4194302: row not used\n"
        "p_EDE.csv:4: column 5 (object-instance): \"\" is not an instance; allowed is 0 to 4194302: row "
        "not used\n"
        "p_EDE.csv:6: analog-input 1 of device 1 is also in line 5: row not used\n"
        "p_EDE.csv:7: column 5 (object-instance): a Device object has the instance of its device, which "
        "is 2: row not used\n");
    EXPECT_EQ(import.report.rows, 6u);
    EXPECT_EQ(import.report.points, 1u);
    EXPECT_EQ(import.report.RowsNotUsed(), 5u);
    EXPECT_FALSE(import.report.IsWhole());
}

TEST(EdeReader, NotesNamesThatAreMissingOrTwiceInADevice) {
    EdeImport const import = ImportOf("K;1;;0;1\nK;1;A;0;2\nK;1;A;0;3\nK;2;A;0;3\n");
    EXPECT_EQ(LinesOf(import),
              "p_EDE.csv:2: column 3 (object-name): is empty; an object has a name\n"
              "p_EDE.csv:4: column 3 (object-name): \"A\" is also the name of the object in line 3\n");
    EXPECT_TRUE(import.report.IsWhole());
    EXPECT_EQ(import.report.points, 4u);
}

TEST(EdeReader, OrdersDevicesByTheirInstancesAndKeepsTheOrderOfObjects) {
    EdeImport const import =
        ImportOf("K;7;A;1;9\nK;3;B;0;1\nK;7;C;0;1\nK;7;Device seven;8;7;in the cellar\n");
    ASSERT_EQ(import.inventory.devices.size(), 2u);
    DeviceRecord const& last = import.inventory.devices[1];
    EXPECT_EQ(last.Instance(), 7u);
    EXPECT_EQ(NameOf(last.device), "Device seven");
    EXPECT_EQ(TextOf(last.device, PropertyId::Description), "in the cellar");
    ASSERT_EQ(last.objects.size(), 2u);
    EXPECT_EQ(last.objects[0].id, (standard::ObjectId{1, 9}));
    EXPECT_EQ(import.report.points, 3u);
    EXPECT_EQ(import.report.devices, 2u);
}

TEST(EdeReader, FindsColumnsByTheirHeadingsInAnyOrderAndSpelling) {
    EdeImport const import = workbench::ReadEde(
        {{"p", "Instance;Object_Type;OBJECT NAME;device-obj-instance;Colour;Units\n5;0;T;12;red;62\n"},
         {},
         {},
         {}});
    EXPECT_EQ(LinesOf(import),
              "p:1: column 5 (Colour): is not a column of an EDE file; its texts are kept\n");
    ObjectRecord const& object = ObjectsOf(import).at(0);
    EXPECT_EQ(import.inventory.devices[0].Instance(), 12u);
    EXPECT_EQ(object.id, (standard::ObjectId{0, 5}));
    EXPECT_EQ(NameOf(object), "T");
    EXPECT_EQ(object.listed.at("Colour"), "red");
    EXPECT_EQ(UnitsOf(object), 62u);
}

TEST(EdeReader, ReadsUnitsBySymbol) {
    EdeImport const import =
        ImportOf("K;1;A;0;1;;;;;;;;;;°C\nK;1;B;0;2;;;;;;;;;;kWh\nK;1;C;0;3;;;;;;;;;;%\n");
    EXPECT_EQ(LinesOf(import), "");
    EXPECT_EQ(UnitsOf(ObjectsOf(import)[0]), 62u);
    EXPECT_EQ(UnitsOf(ObjectsOf(import)[1]), 19u);
    EXPECT_EQ(UnitsOf(ObjectsOf(import)[2]), 98u);
}

TEST(EdeReader, ReportsTheValuesOfASecondColumnWithTheSameHeading) {
    EdeImport const import = workbench::ReadEde(
        {{"p", "device;object-type;instance;object-name;settable;settable\n1;0;1;A;;Y\n"}, {}, {}, {}});
    EXPECT_EQ(LinesOf(import),
              "p:1: column 6 (settable): is there twice; the first column is used\n"
              "p:2: column 6 (settable): \"Y\" is in a further column with this heading: value not used\n");
    EXPECT_EQ(ObjectsOf(import)[0].listed.count("settable"), 0u);
}

TEST(EdeReader, ReportsValuesBelowAnEmptyHeading) {
    EdeImport const import = workbench::ReadEde(
        {{"p", "device;object-type;instance;;object-name\n1;0;1;lost;A\n1;0;2;;B\n"}, {}, {}, {}});
    EXPECT_EQ(LinesOf(import), "p:2: column 4: \"lost\" is in a column without a heading: value not used\n");
}

TEST(EdeReader, TakesATextOfAUnitFileWithAllItsCharacters) {
    EdeImport const import = ImportOf(
        "K;1;A;0;1;;;;;;;;;;m/h\nK;1;B;0;2;;;;;;;;;;$\nK;1;C;0;3;;;;;;;;;;§ a\n", "", "7;m³/h\n8;!\n9;§-A\n");
    EXPECT_NE(UnitsOf(ObjectsOf(import)[0]), 7u);
    EXPECT_EQ(UnitsOf(ObjectsOf(import)[1]), std::nullopt);
    EXPECT_EQ(UnitsOf(ObjectsOf(import)[2]), 9u);
}

TEST(EdeReader, NotesCommentsThatCouldBePoints) {
    EXPECT_EQ(LinesOf(ImportOf("K;1;A;0;1\n\"#1 pump\";1;B;0;2\n# a remark;1;2\n")),
              "p_EDE.csv:3: begins with \"#\": a comment, and its point is left out\n");
}

TEST(EdeReader, NotesACommaThatMovesTheFieldsOfItsRow) {
    EdeImport const import = workbench::ReadEde(
        {{"p", "keyname,device,object-name,object-type,instance,min\nK,1,A,2,1,0\nK,1,B,2,2,0,5\n"},
         {},
         {},
         {}});
    EXPECT_EQ(LinesOf(import),
              "p:3: has 7 fields, and the headings have 6: is a comma of a number or text not in quotation "
              "marks?\n"
              "p:3: column 7: \"5\" is in a column without a heading: value not used\n");
}

TEST(EdeReader, NotesALineEndInANameThatHidesARow) {
    EdeImport const import = ImportOf("K;1;\"A;0;1\nK;1;B\";0;2;\"two\nlines\"\n");
    EXPECT_EQ(LinesOf(import),
              "p_EDE.csv:2: column 3 (object-name): has a line end: is a quotation mark missing?\n");
    EXPECT_EQ(ObjectsOf(import).size(), 1u);
}

TEST(EdeReader, ReadsByPositionWithoutHeadings) {
    EdeImport const import =
        workbench::ReadEde({{"p", "Points of the plant\nK;12;T;0;5;the text\n"}, {}, {}, {}});
    EXPECT_EQ(LinesOf(import), "p:1: \"Points of the plant\" is taken for a title\n");
    EXPECT_EQ(TextOf(ObjectsOf(import).at(0), PropertyId::Description), "the text");
}

TEST(EdeReader, ReadsHeadingRowsAlsoAsComments) {
    EdeImport const import = workbench::ReadEde(
        {{"p",
          "# PROJECT_NAME;Plant\nVERSION_OF_REFERENCEFILE;3\n#TIMESTAMP_OF_LAST_CHANGE;2026-01-02\n"
          "author_of_last_change;me\nVersion of layout;2.2\n"},
         {},
         {},
         {}});
    EXPECT_EQ(import.heading.projectName, "Plant");
    EXPECT_EQ(import.heading.fileVersion, "3");
    EXPECT_EQ(import.heading.timestamp, "2026-01-02");
    EXPECT_EQ(import.heading.author, "me");
    EXPECT_EQ(import.heading.layout, "2.2");
    EXPECT_EQ(LinesOf(import), "p: has no row with a point\n");
}

TEST(EdeReader, ReportsAnswersThatAreNeitherYesNorNo) {
    EdeImport const import = ImportOf("K;1;A;0;1;;;;;perhaps;J\n");
    EXPECT_EQ(
        LinesOf(import),
        "p_EDE.csv:2: column 10 (settable): \"perhaps\" is not an answer; allowed are Y and N: value not "
        "used\n");
    EXPECT_EQ(ObjectsOf(import).at(0).listed.at("supports COV"), "Y");
}

TEST(EdeReader, ReportsFieldsWithoutAHeading) {
    EXPECT_EQ(LinesOf(ImportOf("K;1;A;0;1;;;;;;;;;;;;;extra;\n")),
              "p_EDE.csv:2: column 18: \"extra\" is in a column without a heading: value not used\n");
}

TEST(EdeReader, NotesLooseQuotationMarksAndInvalidOctets) {
    EXPECT_EQ(LinesOf(ImportOf("K;1;A;0;1;21\" pipe\n")),
              "p_EDE.csv:2: has a quotation mark without its counterpart; read as it is\n");
    EXPECT_EQ(LinesOf(ImportOf("K;1;A;0;1;\x81\n")),
              "p_EDE.csv: has octets that are not characters of its encoding; they are read as U+FFFD\n");
}

TEST(EdeReader, ReportsMistakesOfTheFilesBesideIt) {
    EXPECT_EQ(LinesOf(ImportOf("K;1;A;0;1\n", "Reference;Text\n1;a\nx;b\n1;c\n")),
              "p_StateTexts.csv:3: column 1: \"x\" is not a number; a row is a number and its text: value "
              "not used\n"
              "p_StateTexts.csv:4: column 1: the number 1 is also in line 2: value not used\n");
    EXPECT_EQ(LinesOf(ImportOf("K;1;A;0;1\n", "State Texts\nReference;Text\n1;a\n")), "");
    EXPECT_EQ(LinesOf(ImportOf("K;1;A;0;1\n", "off;on\n")),
              "p_StateTexts.csv: has no row with a number and its text\n");
    EXPECT_EQ(LinesOf(ImportOf("K;1;A;0;1\n", "1O;a;b\n2;c;d\n")),
              "p_StateTexts.csv:1: column 1: \"1O\" is not a number; a row is a number and its text: value "
              "not used\n");
}

TEST(EdeReader, ReportsInTextAndJson) {
    EdeImport const import = ImportOf("K;x;A;0;1\n");
    EXPECT_EQ(ImportReportText(import.report),
              "p_EDE.csv:2: column 2 (device obj.-instance): \"x\" is not an instance; allowed is 0 to "
              "4194302: row not used\n"
              "p_EDE.csv: has no row with a point\n"
              "rows: 1, devices: 0, points: 0, rows not used: 1, values not used: 0, devices not used: 0\n");
    EXPECT_EQ(
        ImportReportJson(import.report),
        "{\"effect\":\"row-not-used\",\"file\":\"p_EDE.csv\",\"line\":2,\"column\":2,\"heading\":\"device "
        "obj.-instance\",\"reason\":\"\\\"x\\\" is not an instance; allowed is 0 to 4194302\"}\n"
        "{\"effect\":\"note\",\"file\":\"p_EDE.csv\",\"line\":null,\"column\":null,\"heading\":null,"
        "\"reason\":\"has no row with a point\"}\n"
        "{\"rows\":1,\"devices\":0,\"points\":0,\"rows_not_used\":1,\"values_not_used\":0,"
        "\"devices_not_used\":0}\n");
}
