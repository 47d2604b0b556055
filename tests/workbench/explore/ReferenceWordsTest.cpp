#include "ReferenceWords.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

using standard::Datum;
using standard::DatumKind;

Datum Context(std::uint8_t tag, std::vector<unsigned char> const& octets) {
    Datum datum;
    datum.kind = DatumKind::Unknown;
    datum.isContext = true;
    datum.tag = tag;
    for (unsigned char const octet : octets) {
        datum.octets.push_back(static_cast<char>(octet));
    }
    return datum;
}

Datum const Object = Context(0, {0x00, 0x80, 0x00, 0x01});
Datum const Property = Context(1, {85});

TEST(ReferenceWords, NameTheObjectAndTheProperty) {
    EXPECT_EQ("analog-value 1 present-value", ReferenceWords({Object, Property}));
    EXPECT_EQ("analog-value 1 present-value, analog-value 1 present-value",
              ReferenceWords({Object, Property, Object, Property}));
}

TEST(ReferenceWords, HaveTheIndexAndTheDeviceOfAReference) {
    Datum const device = Context(3, {0x02, 0x00, 0x00, 0x07});
    EXPECT_EQ("analog-value 1 priority-array[200]",
              ReferenceWords({Object, Context(1, {87}), Context(2, {200})}));
    EXPECT_EQ("analog-value 1 present-value of device 7, analog-value 1 present-value",
              ReferenceWords({Object, Property, device, Object, Property}));
}

TEST(ReferenceWords, ReadTheReferenceInASetpoint) {
    Datum setpoint;
    setpoint.kind = DatumKind::Constructed;
    setpoint.isContext = true;
    setpoint.children = {Object, Property};
    EXPECT_EQ("analog-value 1 present-value", ReferenceWords({setpoint}));
}

TEST(ReferenceWords, AreNothingForAnotherStructure) {
    EXPECT_FALSE(ReferenceWords({}));
    EXPECT_FALSE(ReferenceWords({Object}));
    EXPECT_FALSE(ReferenceWords({Property, Object}));
    EXPECT_FALSE(ReferenceWords({Object, Context(1, {})}));
    EXPECT_FALSE(ReferenceWords({Object, Context(1, {1, 2, 3, 4, 5})}));
    EXPECT_FALSE(ReferenceWords({Object, Property, Context(7, {1})}));
}

}  // namespace
}  // namespace workbench
