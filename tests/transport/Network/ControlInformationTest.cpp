#include "Network/ControlInformation.h"

#include <gtest/gtest.h>

#include "Hex.h"
#include "Network/NDataUnitRequest.h"

using test::Hex;
using test::Octets;
using test::ToHex;

namespace {

Network::NDataUnitRequest RemoteRequest(char const* mac, char const* apdu) {
    Network::NDataUnitRequest request;
    request.data = Hex(apdu);
    request.expectingReply = true;
    request.hasDestination = true;
    request.destination = {Hex(mac), 5};
    return request;
}

}  // namespace

TEST(Npdu, LocalRequestHasTwoOctetsBeforeTheApdu) {
    Network::NDataUnitRequest request;
    request.data = Hex("30 01 0C");
    request.expectingReply = true;
    request.destination = {Hex("0A 14"), 5};
    EXPECT_EQ(ToHex(Network::ToNpdu(request)), "01 04 30 01 0C");
}

TEST(Npdu, RequestToARemoteNetworkHasItsDestinationAndAHopCount) {
    EXPECT_EQ(ToHex(Network::ToNpdu(RemoteRequest("0A 14", "30 01"))), "01 24 00 05 02 0A 14 FF 30 01");
}

TEST(Npdu, DestinationWithAnEmptyMacHasNoDadr) {
    EXPECT_EQ(ToHex(Network::ToNpdu(RemoteRequest("", ""))), "01 24 00 05 00 FF");
}

TEST(Npdu, OnlyTheLowOctetOfThePriorityIsUsedAndItIsNotMasked) {
    Network::NDataUnitRequest request;
    request.priority = 3;
    EXPECT_EQ(ToHex(Network::ToNpdu(request)), "01 03");
    request.priority = 0xABCD0150;
    EXPECT_EQ(ToHex(Network::ToNpdu(request)), "01 50");
}

TEST(NetworkControlInformation, IsAllZeroAtFirst) {
    Network::ControlInformation const information;
    EXPECT_EQ(ToHex(information.GetBytes()), "01 00");
    EXPECT_EQ(information.destination.network, 0);
    EXPECT_TRUE(information.destination.bytes.empty());
}

TEST(NetworkControlInformation, WritesSourceBetweenDestinationAndHopCount) {
    Network::ControlInformation information;
    information.hasDestination = true;
    information.destination = {Hex("AA"), 0x0102};
    information.hasSource = true;
    information.source = {Hex("BB CC"), 0x0304};
    information.hopCount = 7;
    EXPECT_EQ(ToHex(information.GetBytes()), "01 28 01 02 01 AA 03 04 02 BB CC 07");
}

TEST(NetworkControlInformation, SourceAloneHasNoHopCount) {
    Network::ControlInformation information;
    information.hasSource = true;
    information.source = {Hex("2A"), 7};
    information.hopCount = 9;
    EXPECT_EQ(ToHex(information.GetBytes()), "01 08 00 07 01 2A");
}

TEST(NetworkControlInformation, NetworkMessageFlagWritesNoMessageType) {
    Network::ControlInformation information;
    information.isNetworkMessage = true;
    information.expectingReply = true;
    information.messageType = 0x81;
    information.vendor = 0x22;
    EXPECT_EQ(ToHex(information.GetBytes()), "01 84");
}

TEST(NetworkAddress, LengthOctetIsTheLowOctetOfTheSize) {
    Network::Address const address{Octets(258, 1), 0xFFFE};
    auto const octets = address.GetBytes();
    ASSERT_EQ(octets.size(), 261u);
    EXPECT_EQ(ToHex({octets.begin(), octets.begin() + 4}), "FF FE 02 01");
}
