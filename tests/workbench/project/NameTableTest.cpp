#include "NameTable.h"

#include <gtest/gtest.h>

#include <set>

#include "CodeMaps.h"

using namespace workbench;

namespace {

std::set<std::string> NamesOf(NameTable const& table) {
    auto const names = table.Names();
    return {names.begin(), names.end()};
}

TEST(NameTable, HasTheObjectTypesOfTheDriver) {
    dorvel::BACnet::InitObjectTypesMap();
    EXPECT_EQ(dorvel::BACnet::objectTypesMap.size(), ObjectTypes().Names().size());
    for (NameRow const& row : ObjectTypes()) {
        EXPECT_EQ(static_cast<int>(dorvel::BACnet::GetBacnetObjectType(row.code)), row.bacnetNumber)
            << row.name;
    }
}

TEST(NameTable, HasThePropertiesOfTheDriver) {
    dorvel::BACnet::InitObjectTypesMap();
    EXPECT_EQ(dorvel::BACnet::propertyTypesMap.size(), Properties().Names().size());
    for (NameRow const& row : Properties()) {
        EXPECT_EQ(static_cast<int>(dorvel::BACnet::GetPropertyType(row.code)), row.bacnetNumber) << row.name;
    }
}

TEST(NameTable, HasEveryNameOnce) {
    EXPECT_EQ(NamesOf(ObjectTypes()).size(), ObjectTypes().Names().size());
    EXPECT_EQ(NamesOf(Properties()).size(), Properties().Names().size());
}

TEST(NameTable, SpellingDoesNotMatter) {
    for (char const* const spelling :
         {"analog-input", "Analog Input", "ANALOG_INPUT", "analogInput", "-analog--input "}) {
        NameRow const* const row = ObjectTypes().FindName(spelling);
        ASSERT_NE(row, nullptr) << spelling;
        EXPECT_EQ(row->code, 1);
    }
    ASSERT_NE(Properties().FindName("Present_Value"), nullptr);
    EXPECT_EQ(Properties().FindName("Present_Value")->bacnetNumber, 85);
    EXPECT_EQ(ObjectTypes().FindName("Multi-state Input")->bacnetNumber, 13);
    EXPECT_EQ(ObjectTypes().FindName("Bit String Value")->bacnetNumber, 39);
}

TEST(NameTable, RarePropertiesHaveTheirCodes) {
    EXPECT_EQ(Properties().FindName("blink-warn-enable")->code, 14);
    EXPECT_EQ(Properties().FindName("is-utc")->code, 26);
}

TEST(NameTable, UnknownNamesAndCodesAreNotFound) {
    EXPECT_EQ(ObjectTypes().FindName("device"), nullptr);
    EXPECT_EQ(ObjectTypes().FindName(""), nullptr);
    EXPECT_EQ(ObjectTypes().FindCode(1000), nullptr);
    EXPECT_EQ(ObjectTypes().FindCode(-1), nullptr);
    EXPECT_EQ(Properties().FindCode(1LL << 40), nullptr);
    EXPECT_EQ(Properties().FindCode(37)->bacnetNumber, 178);
}

}  // namespace
