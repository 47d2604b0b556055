#include "NetworkMessages.h"

#include "CutOff.h"

using namespace standard;
using test::ExpectNoneWhenCutOff;
using test::Hex;
using test::ToHex;

TEST(NetworkMessages, WhoIsRouterMeansAllNetworksOrOne) {
    EXPECT_EQ(ToHex(WhoIsRouterToNetwork().Encode()), "00");
    EXPECT_EQ(ToHex(WhoIsRouterToNetwork{5}.Encode()), "00 00 05");
    ASSERT_TRUE(WhoIsRouterToNetwork::Decode(Hex("00")));
    EXPECT_FALSE(WhoIsRouterToNetwork::Decode(Hex("00"))->network);
    EXPECT_EQ(WhoIsRouterToNetwork::Decode(Hex("00 12 34"))->network, 0x1234);
    EXPECT_FALSE(WhoIsRouterToNetwork::Decode(Hex("00 00 05 00")));
    EXPECT_FALSE(WhoIsRouterToNetwork::Decode(Hex("01 00 05")));
    ExpectNoneWhenCutOff("00 00 05", {1}, WhoIsRouterToNetwork::Decode);
}

TEST(NetworkMessages, IAmRouterListsNetworks) {
    EXPECT_EQ(ToHex(IAmRouterToNetwork{{5, 0x1234}}.Encode()), "01 00 05 12 34");
    auto const message = IAmRouterToNetwork::Decode(Hex("01 00 05 12 34"));
    ASSERT_TRUE(message);
    EXPECT_EQ(message->networks, (std::vector<std::uint16_t>{5, 0x1234}));
    EXPECT_TRUE(IAmRouterToNetwork::Decode(Hex("01"))->networks.empty());
    EXPECT_FALSE(IAmRouterToNetwork::Decode(Hex("02 00 05")));
    ExpectNoneWhenCutOff("01 00 05 12 34", {1, 3}, IAmRouterToNetwork::Decode);
}

TEST(NetworkMessages, RejectNamesReasonAndNetwork) {
    EXPECT_EQ(ToHex(RejectMessageToNetwork{1, 5}.Encode()), "03 01 00 05");
    auto const message = RejectMessageToNetwork::Decode(Hex("03 02 12 34"));
    ASSERT_TRUE(message);
    EXPECT_EQ(message->reason, 2);
    EXPECT_EQ(message->network, 0x1234);
    ExpectNoneWhenCutOff("03 01 00 05", {}, RejectMessageToNetwork::Decode);
    EXPECT_EQ(RouterRejectText(0), "other error");
    EXPECT_EQ(RouterRejectText(1), "no route to the network");
    EXPECT_EQ(RouterRejectText(6), "the address is not valid");
    EXPECT_EQ(RouterRejectText(7), "reason 7");
}

TEST(NetworkMessages, TheNumberOfANetworkIsAskedAndStated) {
    EXPECT_EQ(ToHex(WhatIsNetworkNumber().Encode()), "12");
    EXPECT_TRUE(WhatIsNetworkNumber::Decode(Hex("12")));
    EXPECT_FALSE(WhatIsNetworkNumber::Decode(Hex("12 00")));
    EXPECT_FALSE(WhatIsNetworkNumber::Decode(Hex("13")));
    EXPECT_EQ(ToHex(NetworkNumberIs{0x1234, true}.Encode()), "13 12 34 01");
    auto const message = NetworkNumberIs::Decode(Hex("13 00 05 00"));
    ASSERT_TRUE(message);
    EXPECT_EQ(message->network, 5);
    EXPECT_FALSE(message->isConfigured);
    EXPECT_FALSE(NetworkNumberIs::Decode(Hex("13 00 05 02")));
    ExpectNoneWhenCutOff("13 12 34 01", {}, NetworkNumberIs::Decode);
}

TEST(NetworkMessages, WhatIsDecodedIsEncodedToTheSame) {
    std::mt19937 random(3);
    char const* const texts[] = {"00 00 05", "01 00 05 12 34", "03 01 00 05", "12", "13 12 34 01"};
    for (int i = 0; i < 20000; ++i) {
        test::Octets const octets = test::RandomOctets(random, texts[i % 5], 8);
        auto const same = [&](auto const& message) { return !message || message->Encode() == octets; };
        EXPECT_TRUE(same(WhoIsRouterToNetwork::Decode(octets)));
        EXPECT_TRUE(same(IAmRouterToNetwork::Decode(octets)));
        EXPECT_TRUE(same(RejectMessageToNetwork::Decode(octets)));
        EXPECT_TRUE(same(WhatIsNetworkNumber::Decode(octets)));
        EXPECT_TRUE(same(NetworkNumberIs::Decode(octets)));
    }
}
