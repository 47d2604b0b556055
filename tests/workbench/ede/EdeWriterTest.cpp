#include "EdeWriter.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "Comparison.h"
#include "EdeTexts.h"
#include "FieldValue.h"
#include "ProjectError.h"
#include "TemporaryFolder.h"

using standard::PropertyId;
using test::ImportOf;
using workbench::DeviceRecord;
using workbench::EdeHeading;
using workbench::EdePaths;
using workbench::EdeTexts;
using workbench::Inventory;
using workbench::ReadEde;
using workbench::TextDatum;
using workbench::WriteEde;

namespace {

EdeHeading const Heading{"Plant", "3", "2026-01-02", "me", "2.2"};

constexpr char const* Top =
    "#Engineering-Data-Exchange\r\nPROJECT_NAME;Plant\r\nVERSION_OF_REFERENCEFILE;3\r\n"
    "TIMESTAMP_OF_LAST_CHANGE;2026-01-02\r\nAUTHOR_OF_LAST_CHANGE;me\r\nVERSION_OF_LAYOUT;2.3\r\n"
    "#mandatory;mandatory;mandatory;mandatory;mandatory;optional;optional;optional;optional;optional;"
    "optional;"
    "optional;optional;optional;optional;optional;optional\r\n"
    "#keyname;device obj.-instance;object-name;object-type;object-instance;description;present-value-default;"
    "min-present-value;max-present-value;settable;supports "
    "COV;hi-limit;low-limit;state-text-reference;unit-code;"
    "vendor-specific-address;notification-class\r\n";

// The rows of the EDE file that is written for these rows.
std::string Rewritten(std::string const& rows, std::string const& states = "") {
    std::string const text = WriteEde(ImportOf(rows, states).inventory, Heading).ede;
    std::size_t const top = text.find(Top);
    return top == std::string::npos ? "no heading" : text.substr(top + std::string(Top).size());
}

std::string Join(std::vector<std::string> const& lines) {
    std::string text;
    for (std::string const& line : lines) {
        text += line + "\n";
    }
    return text;
}

}  // namespace

TEST(EdeWriter, WritesLayout23) {
    EXPECT_EQ(WriteEde({}, Heading).ede, Top);
    EXPECT_EQ(Rewritten("K1;2001;AHU;0;7;Supply;21,5;-50;150;N;Y;80,5;-10;;62;a/b;3\n"),
              "K1;2001;AHU;0;7;Supply;21.5;-50;150;N;Y;80.5;-10;;62;a/b;3\r\n");
}

TEST(EdeWriter, OrdersRowsByDeviceTypeAndInstance) {
    EXPECT_EQ(Rewritten("a;7;A;1;1;;;;;N\nb;7;B;0;9;;;;;N\nc;7;C;0;2;;;;;N\nd;7;D;8;7\ne;3;E;0;1;;;;;N\n"),
              "e;3;E;0;1;;;;;N;;;;;;;\r\nd;7;D;8;7;;;;;;;;;;;;\r\nc;7;C;0;2;;;;;N;;;;;;;\r\n"
              "b;7;B;0;9;;;;;N;;;;;;;\r\na;7;A;1;1;;;;;N;;;;;;;\r\n");
}

TEST(EdeWriter, NumbersEqualStateTextsOnce) {
    std::string const states = "9;stop;run\n5;off;on;auto\n2;stop;run\n";
    auto const import = ImportOf(
        "a;1;A;3;1;;;;;N;;;;9\nb;1;B;5;1;;;;;N;;;;2\nc;1;C;19;1;;;1;3;N;;;;5\nd;1;D;19;2;;;1;4;N\n", states);
    EdeTexts const texts = WriteEde(import.inventory, Heading);
    EXPECT_EQ(texts.ede, std::string(Top) +
                             "a;1;A;3;1;;;;;N;;;;1;;;\r\nb;1;B;5;1;;;;;N;;;;1;;;\r\n"
                             "c;1;C;19;1;;;1;3;N;;;;2;;;\r\nd;1;D;19;2;;;1;4;N;;;;;;;\r\n");
    EXPECT_EQ(texts.stateTexts,
              "#State Text Reference\r\n#Reference Number;Text 1 or Inactive-Text;Text 2 or Active-Text;Text "
              "3\r\n1;stop;run\r\n2;off;on;auto\r\n");
}

TEST(EdeWriter, ListsTheUnitsAndObjectTypesThatOccur) {
    auto const import =
        ImportOf("a;1;A;0;1;;;;;;;;;;62\nb;1;B;200;1;;;;;;;;;;300\nc;1;C;201;1;;;;;;;;;;301\n", "",
                 "300;Nm3/h\n", "200;Meter\n");
    EdeTexts const texts = WriteEde(import.inventory, Heading);
    EXPECT_EQ(texts.units,
              "#Encoding of BACnet Engineering Units\r\n#Code;Unit Text\r\n"
              "62;degrees-celsius\r\n300;Nm3/h\r\n301;unit 301\r\n");
    EXPECT_EQ(texts.objectTypes,
              "#Encoding of BACnet Object Types\r\n#Code;Object Type\r\n"
              "0;analog-input\r\n200;Meter\r\n201;object type 201\r\n");
    EXPECT_EQ(Join(texts.notes), "");
}

TEST(EdeWriter, WritesTheCodeOfAUnitThatTheObjectTypeDoesNotHave) {
    EdeTexts const texts = WriteEde(ImportOf("a;1;A;3;1;;;;;N;;;;;Percent\n").inventory, Heading);
    EXPECT_NE(texts.ede.find("a;1;A;3;1;;;;;N;;;;;98;;\r\n"), std::string::npos);
    EXPECT_NE(texts.units.find("98;percent\r\n"), std::string::npos);
    EXPECT_EQ(Join(texts.notes), "");
}

TEST(EdeWriter, WritesTheCodeOfAVendorsUnitInOneForm) {
    EXPECT_EQ(Rewritten("a;1;A;3;1;;;;;N;;;;;1e3;;\nb;1;B;0;1;;;;;N;;;;;1e3;;\n"),
              "b;1;B;0;1;;;;;N;;;;;1000;;\r\na;1;A;3;1;;;;;N;;;;;1000;;\r\n");
    auto const list = ImportOf("a;1;A;3;1;;;;;N;;;;;1e3;;\n");
    EXPECT_EQ(list.inventory.devices.at(0).objects.at(0).listed.at("unit-code"), "1000");
}

TEST(EdeWriter, LeavesOutAUnitOfControlCharacters) {
    std::string const row = "a;1;A;0;1;;;;;N;;;;;" + std::string("\x01\0", 2) + ";;\n";
    EXPECT_EQ(Rewritten(row), "a;1;A;0;1;;;;;N;;;;;;;\r\n");
}

TEST(EdeWriter, QuotesWhatHasToBeQuoted) {
    EXPECT_EQ(Rewritten("a;1;\"A;\"\"x\"\"\";0;1;\" b \";;;;N\n"),
              "a;1;\"A;\"\"x\"\"\";0;1;\" b \";;;;N;;;;;;;\r\n");
    EXPECT_EQ(Rewritten("a;1;A;0;1;\"x\ny\";;;;N\n"), "a;1;A;0;1;x y;;;;N;;;;;;;\r\n");
}

TEST(EdeWriter, BeginsWithAByteOrderMarkOnlyBeyondAscii) {
    EdeTexts const texts = WriteEde(ImportOf("a;1;Geb\xE4ude;0;1\n").inventory, Heading);
    EXPECT_EQ(texts.ede.substr(0, 4), "\xEF\xBB\xBF#");
    EXPECT_NE(texts.ede.find("Gebäude"), std::string::npos);
    EXPECT_EQ(texts.units[0], '#');
}

TEST(EdeWriter, MakesKeynamesOfAPlant) {
    Inventory plant;
    for (std::uint32_t const instance : {1u, 2u}) {
        DeviceRecord device;
        device.device.id = {8, instance};
        device.device.Set(PropertyId::Object_Name, {TextDatum("Device " + std::to_string(instance))});
        for (std::uint32_t const number : {1u, 2u, 3u}) {
            device.objects.emplace_back();
            device.objects.back().id = {2, number};
        }
        device.objects[0].Set(PropertyId::Object_Name, {TextDatum("T")});
        device.objects[1].Set(PropertyId::Object_Name, {TextDatum("#" + std::to_string(instance))});
        plant.devices.push_back(device);
    }
    EXPECT_EQ(
        WriteEde(plant, Heading).ede,
        std::string(Top) +
            "Device 1;1;Device 1;8;1;;;;;;;;;;;;\r\n1.T;1;T;2;1;;;;;Y;;;;;;;\r\n_#1;1;#1;2;2;;;;;Y;;;;;;;\r\n"
            "1.analog-value 3;1;;2;3;;;;;Y;;;;;;;\r\n"
            "Device 2;2;Device 2;8;2;;;;;;;;;;;;\r\n2.T;2;T;2;1;;;;;Y;;;;;;;\r\n_#2;2;#2;2;2;;;;;Y;;;;;;;\r\n"
            "2.analog-value 3;2;;2;3;;;;;Y;;;;;;;\r\n");
}

TEST(EdeWriter, KnowsFromTheDeviceWhetherItReportsChanges) {
    Inventory plant;
    DeviceRecord device;
    device.device.id = {8, 1};
    standard::Datum services;
    services.kind = standard::DatumKind::BitString;
    services.text = "000001";
    device.device.Set(PropertyId::Protocol_Services_Supported, {services});
    for (std::uint16_t const type : {std::uint16_t{0}, std::uint16_t{17}}) {
        device.objects.emplace_back();
        device.objects.back().id = {type, 1};
        device.objects.back().Set(PropertyId::Object_Name, {TextDatum("N" + std::to_string(type))});
    }
    plant.devices.push_back(device);
    std::string const text = WriteEde(plant, Heading).ede;
    EXPECT_NE(text.find("N0;1;N0;0;1;;;;;N;Y;"), std::string::npos) << text;
    EXPECT_NE(text.find("N17;1;N17;17;1;;;;;N;N;"), std::string::npos) << text;
}

TEST(EdeWriter, NotesWhatTheListDoesNotHave) {
    Inventory plant = ImportOf("a;1;A;0;1;;;;;;;;;;furlong\n").inventory;
    plant.devices.push_back(plant.devices[0]);
    plant.devices[0].objects.push_back(plant.devices[0].objects[0]);
    plant.devices[0].objects[0].listed["Colour"] = "red";
    EXPECT_EQ(
        Join(WriteEde(plant, Heading).notes),
        "device 1 lists objects twice; the list has the first ones\n"
        "device 1 is there twice; the list has the first one, because a list names a device by its instance "
        "alone\n"
        "the unit \"furlong\" has no code; the list has its text in the column unit-code\n"
        "the column \"Colour\" is not one of layout 2.3 and is left out\n");
}

TEST(EdeWriter, WritesTheSameFilesAgainFromWhatItWrote) {
    auto const import = ImportOf(
        "PROJECT_NAME;2001;Gr\xFC\xDF;0;7;\" Sup;ply\";21,5;-50;150;N;Y;80,5;-1e-3;;62;a/b;3\n"
        "K2;2001;B;14;1;;auto;1;3;J;;;;7\nK3;2001;C;4;1;;1;;;Y;;;;4\nK4;7;D;200;1;;;;;;;;;;300\n"
        "#K5;7;E;0;1\nK6;7;D7;8;7;cellar\nmandatory;7;F;12;1;;;;;;;;;;98\nK7;7;;19;9;;;;5;Y\nK8;7;G;45;1;;;-"
        "5;3000000\n",
        "4;off;on\n7;\"a;b\";\"\";auto\n", "300;Nm\xB3/h\n", "200;Meter\n");
    EdeTexts const first = WriteEde(import.inventory, Heading);
    workbench::EdeImport const read = ReadEde({{"e", first.ede},
                                               workbench::EdeFile{"s", first.stateTexts},
                                               workbench::EdeFile{"u", first.units},
                                               workbench::EdeFile{"o", first.objectTypes}});
    EdeTexts const second = WriteEde(read.inventory, read.heading);
    EXPECT_EQ(first.ede, second.ede);
    EXPECT_EQ(first.stateTexts, second.stateTexts);
    EXPECT_EQ(first.units, second.units);
    EXPECT_EQ(first.objectTypes, second.objectTypes);
    EXPECT_EQ(read.report.points, 7u);
    EXPECT_EQ(read.heading.layout, "2.3");
}

TEST(EdeWriter, WritesTheSameFilesAgainOfADeviceWithOddStates) {
    Inventory plant;
    DeviceRecord device;
    device.device.id = {8, 1};
    std::vector<std::string> const texts{"a\nb", "a b", "a\x01"};
    for (std::uint32_t const number : {1u, 2u, 3u}) {
        device.objects.emplace_back();
        device.objects.back().id = {19, number};
        device.objects.back().Set(PropertyId::State_Text, {TextDatum(texts[number - 1]), TextDatum("c")});
        device.objects.back().Set(PropertyId::Number_Of_States, {workbench::UnsignedDatum(number)});
    }
    plant.devices.push_back(device);
    EdeTexts const first = WriteEde(plant, Heading);
    EXPECT_NE(first.stateTexts.find("1;a b;c\r\n2;\"a \";c\r\n"), std::string::npos);
    workbench::EdeImport const read =
        ReadEde({{"e", first.ede}, workbench::EdeFile{"s", first.stateTexts}, {}, {}});
    EXPECT_TRUE(read.report.IsWhole()) << ImportReportText(read.report);
    EdeTexts const second = WriteEde(read.inventory, read.heading);
    EXPECT_EQ(first.ede, second.ede);
    EXPECT_EQ(first.stateTexts, second.stateTexts);
    EXPECT_EQ(ComparisonText(Compare(read.inventory, plant, workbench::DeviceNames::Compare)),
              "differences: 0, devices compared: 1, objects compared: 3\n");
}

TEST(EdeWriter, NamesItsFilesByTheNameOfTheList) {
    std::vector<std::string> const paths{"a/p_EDE.csv", "a/p_StateTexts.csv", "a/p_Units.csv",
                                         "a/p_ObjTypes.csv"};
    EXPECT_EQ(EdePaths("a/p"), paths);
    EXPECT_EQ(EdePaths("a/p.csv"), paths);
    EXPECT_EQ(EdePaths("a/p_EDE.csv"), paths);
    EXPECT_EQ(EdePaths("a/p_ede"), paths);
}

TEST(EdeWriter, ReplacesFilesOnlyIfItMay) {
    test::TemporaryFolder const folder;
    std::string const name = folder.Path() + "/p";
    EdeTexts const texts = WriteEde(ImportOf("a;1;A;0;1\n").inventory, Heading);
    SaveEde(texts, name, false);
    std::ifstream file(name + "_EDE.csv", std::ios::binary);
    std::stringstream content;
    content << file.rdbuf();
    EXPECT_EQ(content.str(), texts.ede);
    try {
        SaveEde(texts, name, false);
        FAIL();
    } catch (workbench::ProjectError const& error) {
        EXPECT_EQ(error.what(),
                  name + "_EDE.csv: exists; choose another name with -o, or replace it with --force");
    }
    SaveEde(texts, name, true);
    EXPECT_THROW(SaveEde(texts, folder.Path() + "/none/p", true), std::runtime_error);
}
