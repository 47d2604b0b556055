// What a block's state says of each kind of answer.

#include "Dialogue.h"

using namespace test;
using namespace workbench;

namespace {

using Answers = Dialogue;

TEST_F(Answers, AGoodExchangeHasNoCause) {
    Exchange(ReadA(1), AnswerA(1));
    Exchange(ReadC(2), AnswerC(2));
    EXPECT_EQ(Why(), "");
    EXPECT_EQ(Point(0).values->front().real, 21.5);
    EXPECT_EQ(Point(1).values->front().text, "x");
    EXPECT_EQ(Point(0).suspect, "");
}

TEST_F(Answers, AnErrorOfAPropertyMakesItsVariablesSuspect) {
    Exchange(ReadC(1), Ack(1, "0C 00000002 1E 29 55 5E 91 01 91 1F 5F 29 6F 5E 91 01 91 1F 5F 1F"));
    EXPECT_EQ(Point(2).suspect, "device: unknown-object");
    EXPECT_EQ(Point(0).suspect, "");
    auto const causes = EndCycle();
    ASSERT_EQ(causes.size(), 1u);
    EXPECT_EQ(causes[0].text, "analog-input 2: present-value: object: unknown-object");
    EXPECT_EQ(causes[0].object, "analog-input 2");
    EXPECT_EQ(causes[0].count, 2u);
    EXPECT_STREQ(CauseName(causes[0].kind), "property-error");
    Exchange(ReadC(2), AnswerC(2));
    EXPECT_EQ(Point(2).suspect, "");
    EXPECT_EQ(Why(), "");
}

TEST_F(Answers, AnErrorOfOnePropertyLeavesTheOthers) {
    Exchange(ReadA(1), Ack(1,
                           "0C 00000001 1E 29 55 4E 44 41AC0000 4F 29 1C 5E 91 02 91 20 5F "
                           "29 6F 4E 82 04 00 4F 1F"));
    EXPECT_EQ(Point(0).suspect, "");
    EXPECT_EQ(Point(1).suspect, "device: unknown-property");
    EXPECT_EQ(Why(), "analog-input 1: description: property: unknown-property");
}

TEST_F(Answers, AnErrorOfStatusFlagsMattersOnlyWhereTheyDecideAQuality) {
    Exchange(ReadC(1), Ack(1, "0C 00000002 1E 29 55 4E 44 41AC0000 4F 29 6F 5E 91 02 91 20 5F 1F"));
    EXPECT_EQ(Why(), "analog-input 2: status-flags: property: unknown-property");
    Octets const request = Request(2, "0C 0B400002 1E 09 1C 09 6F 1F");
    Exchange(request, Ack(2, "0C 0B400002 1E 29 1C 4E 75 02 00 78 4F 29 6F 5E 91 02 91 20 5F 1F"));
    EXPECT_EQ(Why(), "");
    Exchange(request, Ack(2, "0C 0B400002 1E 29 1C 4E 75 02 00 78 4F 1F"));
    EXPECT_EQ(Why().find("status-flags"), std::string::npos);
}

TEST_F(Answers, ErrorRejectAndAbortAreNamed) {
    Exchange(ReadA(1), Apdu("50 01 0E 91 01 91 1F"));
    EXPECT_EQ(Why(), "analog-input 1: the device answers with error object: unknown-object");
    Exchange(ReadA(2), Apdu("60 02 09"));
    EXPECT_EQ(Why(),
              "analog-input 1: the device answers with reject: unrecognized-service; it does not support "
              "ReadPropertyMultiple, which the driver needs");
    Exchange(ReadA(3), Apdu("71 03 04"));
    EXPECT_EQ(Why(), "analog-input 1: the device answers with abort: segmentation-not-supported");
}

TEST_F(Answers, ADatagramThatIsNotBacnetIpIsNamed) {
    Exchange(ReadA(1), Hex("82 0A 00 04"));
    EXPECT_EQ(Why(), "a datagram is not a BACnet/IP message: its BVLC type is 0x82, not 0x81");
    Exchange(ReadA(2), Hex("81 00 00 06 00 60"));
    EXPECT_EQ(Why(), "a datagram is not a BACnet/IP message: its BVLC function is 0x00 (BVLC-Result)");
    Exchange(ReadA(3), Hex("81 0A 00 07 01 00"));
    EXPECT_EQ(Why(), "a datagram is not a BACnet/IP message: its BVLC length is 7, but it has 6 octets");
    Exchange(ReadA(4), Hex("81 0A"));
    EXPECT_EQ(Why(), "a datagram is not a BACnet/IP message: it has only 2 octets");
}

TEST_F(Answers, AnAnswerThatCannotBeReadIsNamed) {
    Exchange(ReadA(1), Hex("81 0A 00 05 02"));
    EXPECT_EQ(Why(), "a datagram has no valid network-layer header");
    Exchange(ReadA(2), Apdu("30"));
    EXPECT_EQ(Why(), "an answer of 1 octets cannot be read");
    Exchange(ReadA(3), Ack(3, "0C 00000001 1E 29 55"));
    EXPECT_EQ(Why(), "analog-input 1: the content of the answer cannot be read");
    Exchange(ReadA(4), Apdu("20 04 0F"));
    EXPECT_EQ(Why(), "analog-input 1: the answer is not one to the request");
}

TEST_F(Answers, AMessageOfTheNetworkLayerIsNamed) {
    Exchange(ReadA(1), Hex("81 0A 00 0A 01 80 03 01 00 05"));
    EXPECT_EQ(Why(), "a message of the network layer: Reject-Message-To-Network");
}

TEST_F(Answers, AnotherStationIsNamed) {
    Send(ReadA(1));
    network.Comes(Handle, network.time, AnswerA(1), Address("10.0.0.9", 47809));
    Wait();
    EXPECT_EQ(Why(), "10.0.0.9:47809 answers in place of 10.0.0.5:47808");
    EXPECT_EQ(Point(0).values->front().real, 21.5) << "the driver takes it too";
}

TEST_F(Answers, ARouterThatAnswersInPlaceOfTheDeviceIsNamed) {
    Octets const parameters = Hex("02 74 01 0E 0C 00000001 1E 09 55 09 1C 09 6F 1F");
    Send(Frame(parameters, "01 24 00 05 01 0A FF"));
    Receive(Apdu("60 01 09"));
    EXPECT_EQ(Why(),
              "10.0.0.5:47808 answers in place of 10.0.0.5:47808, network 5, station 0A; "
              "analog-input 1: the device answers with reject: unrecognized-service; it does not support "
              "ReadPropertyMultiple, which the driver needs");
    Send(Frame(parameters, "01 24 00 05 01 0A FF"));
    Receive(Frame(Hex(std::string("30 01 0E ") + AnswersA), "01 08 00 05 01 0A"));
    EXPECT_EQ(Why(), "");
}

TEST_F(Answers, AnAddressWithoutAMacIsThatOfAnyStationOfItsNetwork) {
    Octets const request = Frame(Hex("02 74 01 0E 0C 00000001 1E 09 55 09 1C 09 6F 1F"), "01 24 00 05 00 FF");
    Octets const answer = Hex(std::string("30 01 0E ") + AnswersA);
    for (int cycle = 0; cycle < 2; ++cycle) {
        Exchange(request, Frame(answer, "01 08 00 05 01 0A"));
        EXPECT_EQ(Why(), "");
    }
    Exchange(request, Frame(answer, "01 08 00 05 01 0B"));
    EXPECT_EQ(Why(),
              "10.0.0.5:47808, network 5, station 0B answers too, besides 10.0.0.5:47808, network 5, "
              "station 0A; the MAC of the block names neither");
    Exchange(request, Frame(answer, "01 08 00 06 01 0A"));
    EXPECT_EQ(
        Why(),
        "10.0.0.5:47808, network 6, station 0A answers in place of 10.0.0.5:47808, network 5, any station");
}

TEST_F(Answers, AnotherObjectAndAPropertyThatWasNotAskedForAreNamed) {
    Exchange(ReadC(1), Ack(1, "0C 00000003 1E 29 55 4E 44 41AC0000 4F 29 6F 4E 82 04 00 4F 1F"));
    EXPECT_EQ(Why(), "analog-input 2: the device answers for analog-input 3");
    Exchange(ReadC(2), Ack(2,
                           "0C 00000002 1E 29 55 4E 44 41AC0000 4F 29 4D 4E 75 02 00 78 4F "
                           "29 6F 4E 82 04 00 4F 1F"));
    EXPECT_EQ(Why(), "analog-input 2: the device also answers object-name, which was not requested");
}

TEST_F(Answers, APropertyWithoutAResultIsNamed) {
    Exchange(ReadA(1), Ack(1, "0C 00000001 1E 29 55 4E 44 41AC0000 4F 29 6F 4E 82 04 00 4F 1F"));
    EXPECT_EQ(Why(), "analog-input 1: the answer has nothing for description");
}

TEST_F(Answers, AnAnswerThatIsLongerThanNegotiatedIsNamed) {
    std::string text = "0C 00000001 1E 29 55 4E 44 41AC0000 4F 29 1C 4E 75 FE 04 4D 00";
    for (int i = 0; i < 1100; ++i) {
        text += " 78";
    }
    Exchange(ReadA(1), Ack(1, text + " 4F 29 6F 4E 82 04 00 4F 1F"));
    EXPECT_EQ(Why(), "analog-input 1: an answer has 1135 octets, 1024 were negotiated");
    EXPECT_EQ(Point(1).values->front().text.size(), 1100u);
}

TEST_F(Answers, ADatagramOfAnotherThreadIsNotObserved) {
    Here() = {};
    Exchange(ReadA(1), Apdu("60 01 09"));
    EXPECT_EQ(network.sent.size(), 1u);
    Here().block = &Block();
    EXPECT_EQ(Why(), "");
}

TEST_F(Answers, ARequestOfTheDeviceIsNotAnAnswer) {
    Exchange(ReadA(1), Apdu("10 08"));
    Receive(AnswerA(1));
    EXPECT_EQ(Why(), "");
}

}  // namespace
