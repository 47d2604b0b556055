#include "UnconfirmedServices.h"

#include "CutOff.h"

using namespace standard;
using test::ExpectNoneWhenCutOff;
using test::Hex;
using test::ToHex;

namespace {

char const* const WhoIsRange = "10 08 09 07 1A 01 00";
char const* const IAm260001 = "10 00 C4 02 03 F7 A1 22 05 C4 91 00 22 01 04";
char const* const WhoHasName = "10 07 09 00 1B 3F FF FF 3D 05 00 54 65 6D 70";
char const* const WhoHasObject = "10 07 2C 00 00 00 05";
char const* const IHaveTemp = "10 01 C4 02 00 00 07 C4 00 00 00 05 75 05 00 54 65 6D 70";

}  // namespace

TEST(UnconfirmedServices, WhoIsMeansAllDevicesOrARange) {
    EXPECT_EQ(ToHex(WhoIs().Encode()), "10 08");
    EXPECT_TRUE(WhoIs::Decode(Hex("10 08"))->IsFor(ObjectId::LastInstance));
    EXPECT_EQ(ToHex(WhoIs{InstanceRange{7, 256}}.Encode()), WhoIsRange);
    auto const decoded = WhoIs::Decode(Hex(WhoIsRange));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->range, (InstanceRange{7, 256}));
    EXPECT_FALSE(decoded->IsFor(6));
    EXPECT_TRUE(decoded->IsFor(7));
    EXPECT_TRUE(decoded->IsFor(256));
    EXPECT_FALSE(decoded->IsFor(257));
}

TEST(UnconfirmedServices, WhoIsWithAWrongRangeIsNone) {
    EXPECT_FALSE(WhoIs::Decode(Hex("10 08 09 08 19 07")));
    EXPECT_FALSE(WhoIs::Decode(Hex("10 08 09 08 1B 40 00 00")));
    EXPECT_FALSE(WhoIs::Decode(Hex("10 08 19 08")));
    EXPECT_FALSE(WhoIs::Decode(Hex("10 08 09 07 19 07 00")));
    EXPECT_FALSE(WhoIs::Decode(Hex("10 07")));
    EXPECT_FALSE(WhoIs::Decode(Hex("00 08")));
}

TEST(UnconfirmedServices, IAmHasTheDeviceAndItsLimits) {
    IAm const expected{{8, 260001}, 1476, 0, 260};
    EXPECT_EQ(ToHex(expected.Encode()), IAm260001);
    EXPECT_EQ(IAm::Decode(Hex(IAm260001)), expected);
    EXPECT_EQ(ToHex(IAm{{8, 7}, 206, 3, 15}.Encode()), "10 00 C4 02 00 00 07 21 CE 91 03 21 0F");
    EXPECT_TRUE(IsIAm(Hex(IAm260001)));
    EXPECT_TRUE(IsIAm(Hex("10 00")));
    EXPECT_FALSE(IsIAm(Hex("10 01")));
    EXPECT_FALSE(IsIAm(Hex("10")));
}

TEST(UnconfirmedServices, IAmNumbersMayHaveLeadingZeros) {
    EXPECT_EQ(IAm::Decode(Hex("10 00 C4 02 00 00 07 25 08 00 00 00 00 00 00 00 CE 91 00 21 0F")),
              (IAm{{8, 7}, 206, 0, 15}));
}

TEST(UnconfirmedServices, IAmWithWrongParametersIsNone) {
    for (char const* apdu : {"10 00 C4 00 00 00 07 21 CE 91 03 21 0F", "10 00 C3 00 00 07 21 CE 91 03 21 0F",
                             "10 00 C4 02 00 00 07 21 CE 21 03 21 0F", "10 00 C4 02 00 00 07 20 91 03 21 0F",
                             "10 00 C4 02 00 00 07 25 05 01 00 00 00 00 91 03 21 0F",
                             "10 00 C4 02 00 00 07 21 CE 91 03 21 0F 00",
                             "10 00 C4 02 00 00 07 25 09 00 00 00 00 00 00 00 00 CE 91 03 21 0F"}) {
        EXPECT_FALSE(IAm::Decode(Hex(apdu))) << apdu;
        EXPECT_TRUE(IsIAm(Hex(apdu)));
    }
}

TEST(UnconfirmedServices, WhoHasMeansAnObjectOrAName) {
    WhoHas byName;
    byName.range = InstanceRange();
    byName.name = "Temp";
    EXPECT_EQ(ToHex(byName.Encode()), WhoHasName);
    auto const name = WhoHas::Decode(Hex(WhoHasName));
    ASSERT_TRUE(name);
    EXPECT_EQ(name->name, "Temp");
    EXPECT_FALSE(name->object);
    EXPECT_EQ(name->range, InstanceRange());
    WhoHas byObject;
    byObject.object = ObjectId{0, 5};
    EXPECT_EQ(ToHex(byObject.Encode()), WhoHasObject);
    auto const object = WhoHas::Decode(Hex(WhoHasObject));
    ASSERT_TRUE(object);
    EXPECT_EQ(object->object, (ObjectId{0, 5}));
    EXPECT_TRUE(object->IsFor(9));
    EXPECT_FALSE(WhoHas::Decode(Hex("10 07 3D 04 02 01 01 01")));
    EXPECT_FALSE(WhoHas::Decode(Hex("10 07 09 01 19 00 2C 00 00 00 05")));
}

TEST(UnconfirmedServices, IHaveNamesTheObject) {
    EXPECT_EQ(ToHex(IHave{{8, 7}, {0, 5}, "Temp"}.Encode()), IHaveTemp);
    auto const decoded = IHave::Decode(Hex(IHaveTemp));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->device, (ObjectId{8, 7}));
    EXPECT_EQ(decoded->object, (ObjectId{0, 5}));
    EXPECT_EQ(decoded->name, "Temp");
    EXPECT_EQ(IHave::Decode(Hex("10 01 C4 02 00 00 07 C4 00 00 00 05 75 03 04 00 E9"))->name, "é");
    EXPECT_FALSE(IHave::Decode(Hex("10 01 C4 02 00 00 07 C4 00 00 00 05 65 02 00 54")));
}

TEST(UnconfirmedServices, ApdusThatAreCutOffAreNone) {
    ExpectNoneWhenCutOff(WhoIsRange, {2}, WhoIs::Decode);
    ExpectNoneWhenCutOff(IAm260001, {}, IAm::Decode);
    ExpectNoneWhenCutOff(WhoHasName, {}, WhoHas::Decode);
    ExpectNoneWhenCutOff(WhoHasObject, {}, WhoHas::Decode);
    ExpectNoneWhenCutOff(IHaveTemp, {}, IHave::Decode);
}

TEST(UnconfirmedServices, WhatIsDecodedIsEncodedToTheSame) {
    std::mt19937 random(7);
    char const* const texts[] = {WhoIsRange, IAm260001, WhoHasName, WhoHasObject, IHaveTemp};
    for (int i = 0; i < 20000; ++i) {
        test::Octets const octets = test::RandomOctets(random, texts[i % 5], 24);
        if (auto const whoIs = WhoIs::Decode(octets)) {
            EXPECT_EQ(WhoIs::Decode(whoIs->Encode())->range, whoIs->range);
        }
        if (auto const iAm = IAm::Decode(octets)) {
            EXPECT_EQ(IAm::Decode(iAm->Encode()), iAm);
        }
        if (auto const whoHas = WhoHas::Decode(octets)) {
            EXPECT_EQ(WhoHas::Decode(whoHas->Encode())->name, whoHas->name);
        }
        if (auto const iHave = IHave::Decode(octets)) {
            EXPECT_EQ(IHave::Decode(iHave->Encode())->name, iHave->name);
        }
    }
}
