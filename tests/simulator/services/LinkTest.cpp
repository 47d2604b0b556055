#include "StationFixture.h"

using test::Hex;
using test::operator+;
using test::Texts;

// BVLC and NPDU of a device without a router. The requests read Present_Value of analog-input 1.
class Link : public test::StationFixture {
protected:
    void SetUp() override { MakeWith("analog_input{instance = 1, present_value = 1.5}"); }

    static constexpr char const* Request = "00 04 07 0C 0C 00 00 00 01 19 55";
    static constexpr char const* Ack = "30 07 0C 0C 00 00 00 01 19 55 3E 44 3F C0 00 00 3F";
};

TEST_F(Link, UnicastIsAnsweredByUnicast) {
    EXPECT_EQ(Send(Hex("81 0A 00 11 01 04") + Hex(Request)),
              (Texts{std::string("81 0A 00 17 01 00 ") + Ack}));
}

TEST_F(Link, ALengthThatIsNotTheDatagramsIsDropped) {
    EXPECT_EQ(Send(Hex("81 0A 00 12 01 04") + Hex(Request)), Texts{});
    EXPECT_EQ(Send(Hex("81 0A 00 10 01 04") + Hex(Request)), Texts{});
    EXPECT_EQ(Send(Hex("81 0A 01 11 01 04") + Hex(Request)), Texts{});
}

TEST_F(Link, AnotherTypeThanBacnetIpIsDropped) {
    EXPECT_EQ(Send(Hex("82 0A 00 11 01 04") + Hex(Request)), Texts{});
}

TEST_F(Link, AConfirmedRequestToEverybodyIsDropped) {
    EXPECT_EQ(Send(Hex("81 0B 00 11 01 04") + Hex(Request)), Texts{});
    EXPECT_EQ(Send(Hex("81 0A 00 15 01 24 FF FF 00 FF") + Hex(Request)), Texts{});
}

TEST_F(Link, WhoIsOfEveryKindIsAnsweredToTheSender) {
    std::string const iAm = "10 00 C4 02 00 00 64 22 05 C4 91 01 22 03 E7";
    EXPECT_EQ(Send(Hex("81 0B 00 08 01 00 10 08")), (Texts{"81 0A 00 15 01 00 " + iAm}));
    EXPECT_EQ(Send(Hex("81 0A 00 08 01 00 10 08")), (Texts{"81 0A 00 15 01 00 " + iAm}));
    EXPECT_EQ(Send(Hex("81 0B 00 0C 01 20 FF FF 00 FF 10 08")), (Texts{"81 0A 00 15 01 00 " + iAm}));
}

TEST_F(Link, WhoHasIsAnsweredByIHave) {
    std::string const iHave =
        "81 0A 00 23 01 00 10 01 C4 02 00 00 64 C4 00 00 00 01 75 0F 00 61 6E 61 6C 6F 67 "
        "5F 69 6E 70 75 74 20 31";
    EXPECT_EQ(Send(Hex("81 0B 00 0D 01 00 10 07 2C 00 00 00 01")), Texts{iHave});
    EXPECT_EQ(Send(Hex("81 0B 00 13 01 00 10 07 09 64 1A 00 64 2C 00 00 00 01")), Texts{});  // other length
    EXPECT_EQ(Send(Hex("81 0B 00 12 01 00 10 07 09 64 19 64 2C 00 00 00 01")).size(), 0u);
    EXPECT_EQ(Send(Hex("81 0B 00 11 01 00 10 07 09 64 19 64 2C 00 00 00 01")), Texts{iHave});
    EXPECT_EQ(Send(Hex("81 0B 00 11 01 00 10 07 09 65 19 66 2C 00 00 00 01")), Texts{});
    EXPECT_EQ(
        Send(Hex("81 0B 00 19 01 00 10 07 3D 0F 00") + Hex("61 6E 61 6C 6F 67 5F 69 6E 70 75 74 20 31")),
        Texts{iHave});
    EXPECT_EQ(Send(Hex("81 0B 00 0C 01 00 10 07 3A 00 61 62")), Texts{});
    EXPECT_EQ(Send(Hex("81 0B 00 0D 01 00 10 07 2C 00 00 00 02")), Texts{});
    EXPECT_EQ(Send(Hex("81 0B 00 0D 01 00 10 07 2C 02 3F FF FF")), Texts{});
}

TEST_F(Link, ANameThatDoesNotFitIntoAnIHaveIsNotAnswered) {
    MakeWith("analog_input{instance = 1, name = '" + std::string(10000, 'x') + "'}");
    EXPECT_EQ(Send(Hex("81 0B 00 0D 01 00 10 07 2C 00 00 00 01")), Texts{});
}

TEST_F(Link, AnswersCanBeBroadcast) {
    MakeWith("", "i_am = 'broadcast',");
    auto const answers = station->Receive({Client, Hex("81 0A 00 08 01 00 10 08")}, now);
    EXPECT_EQ(HexOf(answers),
              (Texts{"81 0B 00 19 01 20 FF FF 00 FF 10 00 C4 02 00 00 64 22 05 C4 91 01 22 03 E7"}));
    EXPECT_EQ(answers.at(0).peer, simulator::AllOfLink);
    EXPECT_EQ(Ask("00 04 07 0C 0C 02 00 00 64 19 62"), (Texts{"30 07 0C 0C 02 00 00 64 19 62 3E 21 01 3F"}));
}

TEST_F(Link, AForwardedWhoIsIsAnsweredToItsOriginator) {
    auto const answers = station->Receive({Client, Hex("81 04 00 0E C0 A8 01 02 BA C0 01 00 10 08")}, now);
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_EQ(answers[0].peer, (simulator::Endpoint{0xC0A80102, 47808}));
    EXPECT_EQ(answers[0].octets[1], 0x0A);
}

TEST_F(Link, RequestsToABbmdAreAnsweredByANak) {
    EXPECT_EQ(Send(Hex("81 01 00 04")), (Texts{"81 00 00 06 00 10"}));
    EXPECT_EQ(Send(Hex("81 02 00 04")), (Texts{"81 00 00 06 00 20"}));
    EXPECT_EQ(Send(Hex("81 05 00 06 00 3C")), (Texts{"81 00 00 06 00 30"}));
    EXPECT_EQ(Send(Hex("81 06 00 04")), (Texts{"81 00 00 06 00 40"}));
    EXPECT_EQ(Send(Hex("81 08 00 0A 7F 00 00 01 BA C0")), (Texts{"81 00 00 06 00 50"}));
    EXPECT_EQ(Send(Hex("81 09 00 08 01 00 10 08")), (Texts{"81 00 00 06 00 60"}));
}

TEST_F(Link, OtherFunctionsAreDropped) {
    for (char const* datagram :
         {"81 00 00 06 00 00", "81 03 00 04", "81 07 00 04", "81 0C 00 04", "81 FF 00 04"}) {
        EXPECT_EQ(Send(Hex(datagram)), Texts{}) << datagram;
    }
}

TEST_F(Link, AnotherNetworkVersionIsDropped) {
    EXPECT_EQ(Send(Hex("81 0A 00 11 02 04") + Hex(Request)), Texts{});
}

TEST_F(Link, NetworkMessagesAreDropped) {
    EXPECT_EQ(Send(Hex("81 0A 00 07 01 80 00")), Texts{});
    EXPECT_EQ(Send(Hex("81 0A 00 09 01 80 12 00 05")), Texts{});
}

TEST_F(Link, ARequestToAnotherNetworkIsDropped) {
    EXPECT_EQ(Send(Unicast(Hex("01 24 00 05 02 0A 14 FF") + Hex(Request))), Texts{});
}

TEST_F(Link, AClientBehindARouterIsAnsweredThroughIt) {
    EXPECT_EQ(Send(Unicast(Hex("01 0C 00 09 01 2A") + Hex(Request))),
              (Texts{std::string("81 0A 00 1C 01 20 00 09 01 2A FF ") + Ack}));
}

TEST_F(Link, AnImpossibleSourceIsDropped) {
    for (char const* source : {"00 00 01 2A", "FF FF 01 2A", "00 09 00"}) {
        EXPECT_EQ(Send(Unicast(Hex("01 0C") + Hex(source) + Hex(Request))), Texts{}) << source;
    }
}

TEST_F(Link, TheAnswerHasThePriorityOfTheRequest) {
    EXPECT_EQ(Send(Unicast(Hex("01 07") + Hex(Request))), (Texts{std::string("81 0A 00 17 01 03 ") + Ack}));
}

TEST_F(Link, ADatagramCutAnywhereIsNotAnswered) {
    test::Octets const whole = Hex("81 0A 00 11 01 04") + Hex(Request);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(Send(test::Octets(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))),
                  Texts{});
    }
}
