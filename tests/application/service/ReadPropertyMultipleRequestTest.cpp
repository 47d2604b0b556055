#include "ReadPropertyMultipleRequest.h"

#include <gtest/gtest.h>

#include <string>

#include "Service.h"

using test::AnalogInput;
using test::ToHex;

namespace {

std::string RequestFor(ObjectIdentifier object, std::vector<int> const& numbers) {
    std::vector<PropertyIdentifierEnum> properties;
    for (int const number : numbers) {
        properties.push_back(static_cast<PropertyIdentifierEnum>(number));
    }
    return ToHex(ReadPropertyMultipleRequest(object, properties).GetBytes());
}

}  // namespace

TEST(ReadPropertyMultipleRequest, TwoPropertiesOfAnAnalogValue) {
    EXPECT_EQ(RequestFor(ObjectIdentifier(ObjectTypeEnum::Analog_Value, 3), {85, 111}),
              "0C 00 80 00 03 1E 09 55 09 6F 1F");
}

TEST(ReadPropertyMultipleRequest, EmptyListIsOpeningAndClosingTag) {
    EXPECT_EQ(RequestFor(AnalogInput(1), {}), "0C 00 00 00 01 1E 1F");
    EXPECT_EQ(ToHex(ReadPropertyMultipleRequest().GetBytes()), "0C 00 00 00 00 1E 1F");
}

TEST(ReadPropertyMultipleRequest, PropertyAbove255IsCutToItsLowEightBits) {
    EXPECT_EQ(RequestFor(ObjectIdentifier(ObjectTypeEnum::Lighting_Output, 1), {374, 255, 256}),
              "0C 0D 80 00 01 1E 09 76 09 FF 09 00 1F");
}

TEST(ReadPropertyMultipleRequest, OrderIsThatOfTheListAndRepeatsStay) {
    EXPECT_EQ(RequestFor(AnalogInput(1), {111, 85, 111}), "0C 00 00 00 01 1E 09 6F 09 55 09 6F 1F");
}
