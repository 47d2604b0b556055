#include "DriverFacts.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "NameTable.h"

using namespace workbench;

namespace {

VariableConfig On(char const* objectType, char const* property) {
    VariableConfig variable;
    variable.objectType = ObjectTypes().FindName(objectType);
    variable.property = Properties().FindName(property);
    variable.objectNumber = 4194302;
    return variable;
}

std::optional<PropertyTypeEnum> Decoded(char const* objectType, char const* property) {
    DriverAddress const address = AddressOf(On(objectType, property));
    return DecodedAs(address.objectType, address.property);
}

TEST(DriverFacts, CodesAreThoseOfTheDriver) {
    DriverAddress const address = AddressOf(On("schedule", "weekly-schedule"));
    EXPECT_EQ(address.objectType, ObjectTypeEnum::Schedule);
    EXPECT_EQ(address.property, PropertyIdentifierEnum::Weekly_Schedule);
}

TEST(DriverFacts, TypesAreThoseOfTheSupportTable) {
    EXPECT_EQ(Decoded("analog-input", "present-value"), PropertyTypeEnum::Real);
    EXPECT_EQ(Decoded("binary-output", "feedback-value"), PropertyTypeEnum::Real);
    EXPECT_EQ(Decoded("lighting-output", "tracking-value"), PropertyTypeEnum::Real);
    EXPECT_EQ(Decoded("lighting-output", "status-flags"), std::nullopt);
    EXPECT_EQ(Decoded("averaging", "present-value"), std::nullopt);
    // It has a type, but no parser.
    EXPECT_EQ(DecodedAs(ObjectTypeEnum::Analog_Input, PropertyIdentifierEnum::Object_Identifier),
              std::nullopt);
}

TEST(DriverFacts, ARequestHasOneOctetOfTheProperty) {
    EXPECT_EQ(SentAs(On("loop", "setpoint")), PropertyIdentifierEnum::Setpoint);
    for (NameRow const& row : Properties()) {
        EXPECT_EQ(static_cast<int>(SentAs(On("loop", row.name))), row.bacnetNumber % 256) << row.name;
    }
}

TEST(DriverFacts, FivePropertiesAreWrittenThemselves) {
    int themselves = 0;
    for (NameRow const& object : ObjectTypes()) {
        for (NameRow const& property : Properties()) {
            VariableConfig const variable = On(object.name, property.name);
            DriverWrite const write = WriteOf(variable);
            if (write.refusal.empty() && write.property != PropertyIdentifierEnum::Present_Value) {
                ++themselves;
                EXPECT_EQ(write.property, AddressOf(variable).property);
            }
        }
    }
    EXPECT_EQ(themselves, 5);
}

TEST(DriverFacts, SomeTypesAreNeverWritten) {
    EXPECT_EQ(WriteOf(On("analog-value", "units")).refusal, "Property Type not supported");
    EXPECT_EQ(WriteOf(On("bitstring-value", "present-value")).refusal, "Property Type not supported");
    EXPECT_EQ(WriteOf(On("analog-value", "low-limit")).refusal, "Support Information not found");
    EXPECT_EQ(WriteOf(On("lighting-output", "present-value")).refusal, "");
    for (char const* const type :
         {"date-value", "datetime-value", "time-value", "large-analog-value", "accumulator"}) {
        EXPECT_EQ(WriteOf(On(type, "present-value")).refusal, "") << type;
    }
}

TEST(DriverFacts, DefaultsAreThoseOfTheDocument) {
    std::ifstream file(CONFIGURATION_DOCUMENT);
    std::string const document{std::istreambuf_iterator<char>(file), {}};
    EXPECT_NE(document.find("\n| `CountRepeat` | DINT | " + std::to_string(DefaultCountRepeat) + " |"),
              std::string::npos);
    EXPECT_NE(document.find("\n| `MAC` | STRING | `\"255.255.255.255:47808\"` |"), std::string::npos);
    EXPECT_EQ(DefaultMacOctets(), AddressOctets("255.255.255.255"));
    EXPECT_NE(document.find("an attempt always waits " + std::to_string(AnswerTime()) + " ms"),
              std::string::npos);
}

}  // namespace
