#include "Comparison.h"

#include <gtest/gtest.h>

#include "EdeTexts.h"

using test::ImportOf;
using workbench::Compare;
using workbench::Comparison;
using workbench::DeviceNames;
using workbench::Inventory;

namespace {

Comparison Compared(std::string const& list, std::string const& plant,
                    DeviceNames names = DeviceNames::Compare) {
    std::string const states = "1;off;on\n2;stop;run\n";
    return Compare(ImportOf(list, states).inventory, ImportOf(plant, states).inventory, names);
}

}  // namespace

TEST(Comparison, OfEqualPlantsHasNoDifferences) {
    std::string const rows = "a;1;A;0;1;;;;;;;;;;62\nb;1;B;3;1;;;;;;;;;1\nc;1;D1;8;1\n";
    EXPECT_EQ(ComparisonText(Compared(rows, rows)),
              "differences: 0, devices compared: 1, objects compared: 2\n");
}

TEST(Comparison, NamesMissingAdditionalAndChangedObjects) {
    Comparison const comparison =
        Compared("a;1;A;0;1;;;;;;;;;;62\nb;1;B;3;1;;;;;;;;;1\nc;1;C;0;3\nd;2;D;0;1\n",
                 "a;1;A2;0;1;;;;;;;;;;63\nb;1;B;3;1;;;;;;;;;2\ne;1;E;0;4\nf;3;F;8;3\n");
    EXPECT_EQ(
        ComparisonText(comparison),
        "device 1 analog-input 1 \"A\": the name is \"A\" in the list and \"A2\" there\n"
        "device 1 analog-input 1 \"A\": the unit is \"degrees-celsius\" in the list and "
        "\"degrees-kelvin\" there\n"
        "device 1 analog-input 3 \"C\": is missing: only the list has it\n"
        "device 1 analog-input 4 \"E\": is additional: the list does not have it\n"
        "device 1 binary-input 1 \"B\": the state texts are \"off, on\" in the list and \"stop, run\" there\n"
        "device 2: is missing: only the list has it\n"
        "device 3 \"F\": is additional: the list does not have it\n"
        "differences: 7, devices compared: 1, objects compared: 2\n");
}

TEST(Comparison, OfStateTextsIsTextByText) {
    EXPECT_EQ(Compared("a;1;A;3;1;;;;;;;;;off, on|x\n", "a;1;A;3;1;;;;;;;;;off|on, x\n").differences.size(),
              1u);
}

TEST(Comparison, TakesControlCharactersForTheBlanksOfAList) {
    EXPECT_TRUE(Compared("a;1;A B;0;1\n", "a;1;\"A\nB\";0;1\n").differences.empty());
}

TEST(Comparison, IgnoresWhatTheListDoesNotSay) {
    EXPECT_TRUE(Compared("a;1;;0;1\nb;1;B;3;1\n", "a;1;A;0;1;;;;;;;;;;62\nb;1;B;3;1;;;;;;;;;2\n")
                    .differences.empty());
    EXPECT_EQ(ComparisonText(Compared("a;1;A;0;1;;;;;;;;;;62\n", "a;1;A;0;1\n")),
              "device 1 analog-input 1 \"A\": the unit is \"degrees-celsius\" in the list and not there\n"
              "differences: 1, devices compared: 1, objects compared: 1\n");
}

TEST(Comparison, ComparesNamesOfDevicesUnlessTheyAreThoseOfBlocks) {
    EXPECT_EQ(ComparisonText(Compared("a;1;A;8;1\n", "a;1;B;8;1\n")),
              "device 1 \"A\": the name is \"A\" in the list and \"B\" there\n"
              "differences: 1, devices compared: 1, objects compared: 0\n");
    EXPECT_TRUE(Compared("a;1;A;8;1\n", "a;1;B;8;1\n", DeviceNames::Ignore).differences.empty());
}

TEST(Comparison, ReportsNoMissingObjectsOfADeviceThatWasNotReadCompletely) {
    Inventory const list = ImportOf("a;1;A;0;1\nb;1;B;0;2\n").inventory;
    Inventory plant = ImportOf("a;1;A;0;1\n").inventory;
    plant.devices[0].isComplete = false;
    EXPECT_EQ(ComparisonText(Compare(list, plant, DeviceNames::Compare)),
              "note: device 1 was not read completely; its missing objects are not reported\n"
              "differences: 0, devices compared: 1, objects compared: 1\n");
}

TEST(Comparison, IsWrittenAsJson) {
    EXPECT_EQ(
        ComparisonJson(Compared("a;1;A;0;1\nd;2;D;0;1\n", "a;1;B;0;1\n")),
        "{\"difference\":\"name\",\"device\":1,\"object\":\"analog-input 1\",\"name\":\"A\",\"listed\":\"A\","
        "\"actual\":\"B\"}\n"
        "{\"difference\":\"missing-device\",\"device\":2,\"object\":null,\"name\":null,\"listed\":null,"
        "\"actual\":null}\n"
        "{\"differences\":2,\"devices\":1,\"objects\":1,\"notes\":[]}\n");
}
