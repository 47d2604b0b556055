#include "CodeMaps.h"

#include <gtest/gtest.h>

#include <vector>

using namespace dorvel::BACnet;

namespace {

// BACnet's numbers by configuration code, typed in from the engineering tool's pick lists.
std::vector<int> const ObjectTypes = {23, 0,  1,  2,  3,  4,  5,  45, 46, 48, 18, 39,
                                      42, 44, 50, 54, 12, 13, 19, 14, 47, 24, 17};
std::vector<int> const Properties = {85,  108, 40, 59,  45,  136, 150, 135, 149, 93,  49,  26,  125,
                                     14,  373, 25, 111, 81,  103, 379, 384, 106, 164, 151, 147, 148,
                                     344, 117, 28, 36,  123, 38,  84,  187, 188, 176, 179, 178};

// The maps live as long as the process: each test begins and ends with them as they are when the library is
// loaded.
class CodeMaps : public ::testing::Test {
protected:
    CodeMaps() { Clear(); }
    ~CodeMaps() override { Clear(); }

private:
    static void Clear() {
        objectTypesMap.clear();
        propertyTypesMap.clear();
    }
};

TEST_F(CodeMaps, AreEmptyUntilInitialised) {
    EXPECT_EQ(GetBacnetObjectType(22), ObjectTypeEnum{});
    EXPECT_EQ(GetPropertyType(30), PropertyIdentifierEnum{});
}

TEST_F(CodeMaps, HoldAllObjectTypes) {
    InitObjectTypesMap();
    ASSERT_EQ(objectTypesMap.size(), ObjectTypes.size());
    int number = 0;
    for (int const bacnetNumber : ObjectTypes) {
        EXPECT_EQ(static_cast<int>(GetBacnetObjectType(number)), bacnetNumber) << number;
        ++number;
    }
}

TEST_F(CodeMaps, HoldAllProperties) {
    InitObjectTypesMap();
    ASSERT_EQ(propertyTypesMap.size(), Properties.size());
    int number = 0;
    for (int const bacnetNumber : Properties) {
        EXPECT_EQ(static_cast<int>(GetPropertyType(number)), bacnetNumber) << number;
        ++number;
    }
}

TEST_F(CodeMaps, ObjectType22Is17AndProperty30Is123) {
    InitObjectTypesMap();
    EXPECT_EQ(static_cast<int>(GetBacnetObjectType(22)), 17);
    EXPECT_EQ(static_cast<int>(GetPropertyType(30)), 123);
}

TEST_F(CodeMaps, ObjectType1000IsUnknownSo0AndLeavesAnEntry) {
    InitObjectTypesMap();
    EXPECT_EQ(GetBacnetObjectType(1000), ObjectTypeEnum::Analog_Input);
    ASSERT_EQ(objectTypesMap.size(), ObjectTypes.size() + 1);
    EXPECT_EQ(objectTypesMap.at(1000), ObjectTypeEnum::Analog_Input);
}

TEST_F(CodeMaps, PropertyMinus1IsUnknownSo0AndLeavesAnEntry) {
    InitObjectTypesMap();
    EXPECT_EQ(static_cast<int>(GetPropertyType(-1)), 0);
    ASSERT_EQ(propertyTypesMap.size(), Properties.size() + 1);
    EXPECT_EQ(static_cast<int>(propertyTypesMap.at(-1)), 0);
}

TEST_F(CodeMaps, SecondInitialisationChangesNothing) {
    InitObjectTypesMap();
    auto const types = objectTypesMap;
    auto const identifiers = propertyTypesMap;
    InitObjectTypesMap();
    EXPECT_EQ(objectTypesMap, types);
    EXPECT_EQ(propertyTypesMap, identifiers);
}

}  // namespace
