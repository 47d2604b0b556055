#include "VmacAddress.h"

#include <gtest/gtest.h>

#include "Hex.h"

using test::Hex;
using test::ToHex;

TEST(VmacAddress, SettersWriteAddressAndPortInNetworkOrder) {
    VmacAddress address(false);
    address.SetAddress(0xC0A80A01);
    address.SetPort(47808);
    EXPECT_EQ(ToHex(address.GetBytes()), "C0 A8 0A 01 BA C0");
    EXPECT_EQ(address.GetPort(), 47808);
    EXPECT_EQ(address.GetAddress(), 0xC0A80A01u);
}

TEST(VmacAddress, StartsAsSixZeroOctets) {
    EXPECT_EQ(ToHex(VmacAddress(true).GetBytes()), "00 00 00 00 00 00");
    EXPECT_TRUE(VmacAddress(true).IsBroadCast());
    EXPECT_FALSE(VmacAddress(false).IsBroadCast());
}

TEST(VmacAddress, AssignmentCopiesTheOctetsAndKeepsTheBroadcastFlag) {
    VmacAddress broadcast(true);
    broadcast = VmacAddress(Hex("01 02 03 04 05 06"), false);
    EXPECT_EQ(ToHex(broadcast.GetBytes()), "01 02 03 04 05 06");
    EXPECT_TRUE(broadcast.IsBroadCast());

    VmacAddress unicast(false);
    unicast = VmacAddress(true);
    EXPECT_FALSE(unicast.IsBroadCast());
}

TEST(VmacAddress, CopyKeepsOctetsAndFlag) {
    VmacAddress const original(Hex("0A 14"), true);
    VmacAddress const copy = original;
    EXPECT_EQ(ToHex(copy.GetBytes()), "0A 14");
    EXPECT_TRUE(copy.IsBroadCast());
}

TEST(VmacAddress, MissingOctetsCountAsZero) {
    struct Row {
        char const* octets;
        unsigned address;
        unsigned port;
    };
    Row const rows[] = {
        {"", 0, 0},
        {"05", 0x05000000, 0},
        {"0A 14", 0x0A140000, 0},
        {"01 02 03", 0x01020300, 0},
        {"01 02 03 04", 0x01020304, 0},
        {"01 02 03 04 BA", 0x01020304, 0xBA00},
        {"01 02 03 04 BA C0", 0x01020304, 0xBAC0},
        {"01 02 03 04 BA C0 FF", 0x01020304, 0xBAC0},
    };
    for (Row const& row : rows) {
        VmacAddress const address(Hex(row.octets), false);
        EXPECT_EQ(address.GetAddress(), row.address) << row.octets;
        EXPECT_EQ(address.GetPort(), row.port) << row.octets;
        EXPECT_EQ(ToHex(address.GetBytes()), row.octets);
    }
}

TEST(VmacAddress, SettersLengthenAShortAddressAndKeepALongOne) {
    VmacAddress ported(Hex("05"), false);
    ported.SetPort(0xBAC0);
    EXPECT_EQ(ToHex(ported.GetBytes()), "05 00 00 00 BA C0");

    VmacAddress addressed(Hex(""), false);
    addressed.SetAddress(0x01020304);
    EXPECT_EQ(ToHex(addressed.GetBytes()), "01 02 03 04 00 00");

    VmacAddress longer(Hex("01 02 03 04 05 06 07"), false);
    longer.SetPort(0xBAC0);
    EXPECT_EQ(ToHex(longer.GetBytes()), "01 02 03 04 BA C0 07");
}
