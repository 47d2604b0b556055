#include <gtest/gtest.h>

#include "Exceptions.h"
#include "Hex.h"
#include "ObjectIdentifier.h"

using test::Hex;
using test::ToHex;

namespace {

ObjectIdentifier Unpacked(char const* hex) {
    return ObjectIdentifier(Tag::FromOctets(12, false, Hex(hex)));
}

}  // namespace

TEST(ObjectIdentifier, OfType8AndInstance1234PacksAndUnpacks) {
    ObjectIdentifier const device(ObjectTypeEnum::Device, 1234);
    EXPECT_EQ(ToHex(device.GetBytes()), "02 00 04 D2");
    EXPECT_EQ(Unpacked("02 00 04 D2").GetObjectType(), ObjectTypeEnum::Device);
    EXPECT_EQ(Unpacked("02 00 04 D2").GetInstanceNumber(), 1234U);
}

TEST(ObjectIdentifier, OfInstance400000PacksToInstanceZero) {
    ObjectIdentifier const object(ObjectTypeEnum::Device, 0x400000);
    EXPECT_EQ(object.GetInstanceNumber(), 0x400000U);
    EXPECT_EQ(ToHex(object.GetBytes()), "02 00 00 00");
}

TEST(ObjectIdentifier, CutsAnInstanceToItsLow22Bits) {
    EXPECT_EQ(ToHex(ObjectIdentifier(ObjectTypeEnum::Device, 0x7FFFFF).GetBytes()), "02 3F FF FF");
}

TEST(ObjectIdentifier, CutsATypeToItsLowTenBits) {
    EXPECT_EQ(ToHex(ObjectIdentifier(static_cast<ObjectTypeEnum>(0x401), 5).GetBytes()), "00 40 00 05");
    EXPECT_EQ(ToHex(ObjectIdentifier(static_cast<ObjectTypeEnum>(1023), 0x3FFFFF).GetBytes()), "FF FF FF FF");
}

TEST(ObjectIdentifier, UnpacksATagOfAnyNumber) {
    ObjectIdentifier const object(Tag::FromOctets(0, true, Hex("02 00 04 D2")));
    EXPECT_EQ(object.GetObjectType(), ObjectTypeEnum::Device);
    EXPECT_EQ(object.GetInstanceNumber(), 1234U);
}

TEST(ObjectIdentifier, UnpacksFewerOctetsAsTheLowEndAndRefusesMore) {
    EXPECT_EQ(Unpacked("").GetInstanceNumber(), 0U);
    EXPECT_EQ(Unpacked("04 D2").GetInstanceNumber(), 1234U);
    EXPECT_EQ(Unpacked("FF FF FF FF").GetInstanceNumber(), 0x3FFFFFU);
    EXPECT_EQ(static_cast<int>(Unpacked("FF FF FF FF").GetObjectType()), 1023);
    EXPECT_THROW(Unpacked("00 02 00 04 D2"), ParseException);
}

TEST(ObjectIdentifier, ComparesByTypeAndThenByInstance) {
    ObjectIdentifier object(ObjectTypeEnum::Loop, 7);
    EXPECT_EQ(object.Compare(ObjectIdentifier(ObjectTypeEnum::Device, 100)), 4);
    EXPECT_EQ(object.Compare(ObjectIdentifier(ObjectTypeEnum::Loop, 10)), -3);
    object.SetInstanceNumber(10);
    EXPECT_EQ(object.Compare(ObjectIdentifier(ObjectTypeEnum::Loop, 10)), 0);
    object.SetObjectType(ObjectTypeEnum::Device);
    EXPECT_EQ(object.Compare(ObjectIdentifier(ObjectTypeEnum::Loop, 10)), -4);
}
