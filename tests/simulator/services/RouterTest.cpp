#include "StationFixture.h"

using test::Hex;
using test::operator+;
using test::Texts;

// A device at station 0A14 of network 5, with the router that leads to it.
class Router : public test::StationFixture {
protected:
    void SetUp() override {
        MakeWith("analog_input{instance = 1, present_value = 1.5}", "router = {network = 5, mac = '0A14'},");
    }

    Texts SendNpdu(std::string const& head, std::string const& apdu = Request) {
        return Send(Unicast(Hex(head) + Hex(apdu)));
    }

    static constexpr char const* Request = "00 04 07 0C 0C 00 00 00 01 19 55";
    static constexpr char const* Ack = "30 07 0C 0C 00 00 00 01 19 55 3E 44 3F C0 00 00 3F";
};

TEST_F(Router, TheAnswerNamesItsSource) {
    EXPECT_EQ(SendNpdu("01 24 00 05 02 0A 14 FF"),
              (Texts{std::string("81 0A 00 1C 01 08 00 05 02 0A 14 ") + Ack}));
}

TEST_F(Router, AClientBehindAnotherRouterIsAnsweredThroughIt) {
    EXPECT_EQ(SendNpdu("01 2C 00 05 02 0A 14 00 09 01 2A FE"),
              (Texts{std::string("81 0A 00 21 01 28 00 09 01 2A 00 05 02 0A 14 FF ") + Ack}));
}

TEST_F(Router, ARequestWithoutADestinationIsForTheRouterWhichHasNoObjects) {
    EXPECT_EQ(SendNpdu("01 04"), Texts{});
}

TEST_F(Router, AnotherStationOfTheNetworkDoesNotAnswer) {
    EXPECT_EQ(SendNpdu("01 24 00 05 02 0A 15 FF"), Texts{});
    EXPECT_EQ(SendNpdu("01 24 00 05 01 0A FF"), Texts{});
}

TEST_F(Router, AnotherNetworkIsRejected) {
    EXPECT_EQ(SendNpdu("01 24 00 06 02 0A 14 FF"), (Texts{"81 0A 00 0A 01 80 03 01 00 06"}));
    EXPECT_EQ(SendNpdu("01 2C 00 06 02 0A 14 00 09 01 2A FE"),
              (Texts{"81 0A 00 0F 01 A0 00 09 01 2A FF 03 01 00 06"}));
}

TEST_F(Router, AnotherNetworkInABroadcastIsNotRejected) {
    EXPECT_EQ(Send(Hex("81 0B 00 0E 01 20 00 06 02 0A 14 FF 10 08")), Texts{});
}

TEST_F(Router, AHopCountThatRunsOutIsDropped) {
    EXPECT_EQ(SendNpdu("01 24 00 05 02 0A 14 00"), Texts{});
    EXPECT_EQ(SendNpdu("01 24 00 05 02 0A 14 01"), Texts{});
    EXPECT_EQ(SendNpdu("01 24 00 05 02 0A 14 02").size(), 1u);
}

TEST_F(Router, WhoIsToTheNetworkOrToAllIsAnswered) {
    std::string const answer =
        "81 0A 00 1A 01 08 00 05 02 0A 14 10 00 C4 02 00 00 64 22 05 C4 91 01 22 03 E7";
    EXPECT_EQ(SendNpdu("01 20 00 05 00 FF", "10 08"), Texts{answer});
    EXPECT_EQ(SendNpdu("01 20 FF FF 00 FF", "10 08"), Texts{answer});
    EXPECT_EQ(SendNpdu("01 20 FF FF 00 01", "10 08"), Texts{});
    EXPECT_EQ(SendNpdu("01 00", "10 08"), Texts{});
}

TEST_F(Router, AConfirmedRequestToTheWholeNetworkIsDropped) {
    EXPECT_EQ(SendNpdu("01 24 00 05 00 FF"), Texts{});
}

TEST_F(Router, ARoutedBroadcastOfTheLinkCanCarryARequestToOneStation) {
    EXPECT_EQ(Send(Hex("81 0B 00 17 01 24 00 05 02 0A 14 FF") + Hex(Request)).size(), 1u);
}

TEST_F(Router, WhoIsRouterToNetworkIsAnsweredByTheRouterToIt) {
    EXPECT_EQ(Send(Hex("81 0B 00 07 01 80 00")), (Texts{"81 0A 00 09 01 80 01 00 05"}));
    EXPECT_EQ(Send(Hex("81 0B 00 09 01 80 00 00 05")), (Texts{"81 0A 00 09 01 80 01 00 05"}));
    EXPECT_EQ(Send(Hex("81 0B 00 09 01 80 00 00 06")), Texts{});
    EXPECT_EQ(Send(Hex("81 0B 00 0B 01 88 00 07 01 2A 00")), (Texts{"81 0A 00 09 01 80 01 00 05"}));
    EXPECT_EQ(Send(Hex("81 0A 00 0B 01 A0 00 06 00 FF 00")), Texts{});
}

TEST_F(Router, ItKnowsTheNumberOfTheIpNetwork) {
    EXPECT_EQ(Send(Hex("81 0B 00 07 01 80 12")), (Texts{"81 0A 00 0A 01 80 13 00 01 01"}));
    EXPECT_EQ(Send(Hex("81 0B 00 0B 01 88 00 07 01 2A 12")), Texts{});  // must not be routed
    MakeWith("", "router = {network = 1, mac = '07'},");
    EXPECT_EQ(Send(Hex("81 0B 00 07 01 80 12")), (Texts{"81 0A 00 0A 01 80 13 00 02 01"}));
    MakeWith("", "router = {network = 1, mac = '07', own_network = 300},");
    EXPECT_EQ(Send(Hex("81 0B 00 07 01 80 12")), (Texts{"81 0A 00 0A 01 80 13 01 2C 01"}));
}

TEST_F(Router, OtherMessagesOfTheNetworkLayerAreDropped) {
    EXPECT_EQ(Send(Hex("81 0A 00 09 01 80 01 00 05")), Texts{});
    EXPECT_EQ(Send(Hex("81 0A 00 0A 01 80 13 00 05 01")), Texts{});
    EXPECT_EQ(Send(Hex("81 0A 00 06 01 80")), Texts{});
}

TEST_F(Router, AnswersCanBeBroadcast) {
    MakeWith("", "i_am = 'broadcast', router = {network = 5, mac = '0A14'},");
    EXPECT_EQ(Send(Hex("81 0B 00 07 01 80 00")), (Texts{"81 0B 00 09 01 80 01 00 05"}));
    EXPECT_EQ(
        Send(Hex("81 0B 00 0C 01 20 FF FF 00 FF 10 08")),
        (Texts{"81 0B 00 1E 01 28 FF FF 00 00 05 02 0A 14 FF 10 00 C4 02 00 00 64 22 05 C4 91 01 22 03 E7"}));
    auto const answers = station->Receive({Client, Hex("81 0B 00 07 01 80 12")}, now);
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_EQ(answers[0].peer, simulator::AllOfLink);
    EXPECT_EQ(Send(Hex("81 0A 00 0E 01 24 00 06 02 0A 14 FF 00 04")),
              (Texts{"81 0A 00 0A 01 80 03 01 00 06"}));
}

TEST_F(Router, SegmentsAreAcknowledgedThroughTheRouterToo) {
    MakeWith("analog_input{instance = 1}", "router = {network = 5, mac = '0A14'},");
    auto const first = SendNpdu("01 24 00 05 02 0A 14 FF", "02 70 09 0E 0C 00 00 00 01 1E 09 08 1F");
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first[0].substr(0, 47), "81 0A 00 3D 01 0C 00 05 02 0A 14 3C 09 00 10 0E");
    auto const second = SendNpdu("01 24 00 05 02 0A 14 FF", "40 09 00 01");
    ASSERT_EQ(second.size(), 1u);
    EXPECT_EQ(second[0].substr(33, 14), "3C 09 01 10 0E");
}
