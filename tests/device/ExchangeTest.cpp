// The two operations that send and receive datagrams through the host's sockets.

#include <arpa/inet.h>

#include <stdexcept>

#include "DeviceFixture.h"
#include "FormRequest.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

class Exchange : public DeviceFixture {
protected:
    Exchange() { MakeDevice(); }

    int Send(std::string const& data) {
        Network::NDataUnitRequest request;
        request.data = Hex(data);
        request.expectingReply = true;
        request.physicalDestination = device->Settings().linkAddress;
        return device->SendAndReceive(request, apdu);
    }

    // The text of the exception that an answer causes.
    std::string ErrorFor(std::string const& answer) {
        network.ExpectAny().Answer(answer);
        try {
            Send("10 08");
        } catch (std::runtime_error const& error) {
            return error.what();
        }
        return "no error";
    }

    std::vector<char> apdu = Hex("AA BB");
};

TEST_F(Exchange, FramesTheRequestAndUnwrapsTheAnswer) {
    network.Expect("81 0A 00 08 01 04 10 08").Answer("81 0A 00 0A 01 00 20 09 0F 55");
    EXPECT_EQ(Send("10 08"), 10);
    EXPECT_EQ(ToHex(apdu), "20 09 0F 55");
}

TEST_F(Exchange, DatagramGoesToThePeerWhateverTheLinkAddress) {
    network.ExpectAny();
    Send("10 08");
    sockaddr_in const& peer = network.SentDatagrams().at(0).peer;
    EXPECT_EQ(ntohl(peer.sin_addr.s_addr), 0x7F000001u);
    EXPECT_EQ(ntohs(peer.sin_port), 47808);
}

TEST_F(Exchange, BroadcastMacIsStillSentAsUnicast) {
    DeviceParameters parameters;
    parameters.mac = "255.255.255.255:47808";
    MakeDevice(parameters);
    network.Expect("81 0A 00 08 01 04 10 08");
    Send("10 08");
    EXPECT_EQ(ntohl(network.SentDatagrams().at(0).peer.sin_addr.s_addr), 0x7F000001u);
}

TEST_F(Exchange, RequestToARemoteNetworkCarriesDestinationAndHopCount) {
    Network::NDataUnitRequest request;
    request.data = Hex("10 08");
    request.expectingReply = true;
    request.hasDestination = true;
    request.destination = {Hex("0A 14"), 5};
    network.Expect("81 0A 00 0E 01 24 00 05 02 0A 14 FF 10 08");
    device->SendAndReceive(request, apdu);
}

TEST_F(Exchange, PriorityIsTakenFromTheRequest) {
    Network::NDataUnitRequest request;
    request.data = Hex("10");
    request.priority = 2;
    network.Expect("81 0A 00 07 01 02 10");
    device->SendAndReceive(request, apdu);
}

TEST_F(Exchange, LinkAddressOfFewerThanSixOctetsIsStillSent) {
    DeviceParameters parameters;
    parameters.mac = "5";
    MakeDevice(parameters);
    ASSERT_EQ(device->Settings().linkAddress.size(), 1u);
    network.Expect("81 0A 00 08 01 04 10 08");
    Send("10 08");
}

TEST_F(Exchange, LengthFieldFrom256OctetsUpIsThatOfInstalledDevices) {
    network.ExpectAny();
    network.ExpectAny();
    Send(std::string(2 * 249, '0'));
    Send(std::string(2 * 250, '0'));
    EXPECT_EQ(ToHex(network.SentDatagrams()[0].datagram).substr(0, 17), "81 0A 00 FF 01 04");
    EXPECT_EQ(ToHex(network.SentDatagrams()[1].datagram).substr(0, 17), "81 0A 10 00 01 04");
}

TEST_F(Exchange, SilenceTakesTheWholeTimeAndLeavesTheApdu) {
    network.ExpectAny();
    EXPECT_LE(Send("10 08"), 0);
    EXPECT_EQ(ToHex(apdu), "AA BB");
    EXPECT_EQ(network.Elapsed(), 1000);
}

TEST_F(Exchange, WaitDoesNotDependOnTheBlocksTimeout) {
    DeviceParameters parameters;
    parameters.timeout = 5;
    MakeDevice(parameters);
    network.ExpectAny().Answer("81 0A 00 07 01 00 55", 999);
    EXPECT_EQ(Send("10 08"), 7);
    EXPECT_EQ(network.Elapsed(), 999);
}

TEST_F(Exchange, HostGetsTheTask) {
    log.EnableTrace();
    network.RefuseToSend();
    EXPECT_LE(Send("10 08"), 0);
    EXPECT_NE(log.Text().find("task 7: 8 octets"), std::string::npos) << log.Text();
    EXPECT_EQ(ToHex(apdu), "AA BB");
}

TEST_F(Exchange, DatagramOf1500OctetsIsTakenWhole) {
    Octets const datagram = Hex("81 0A 05 DC 01 00") + Octets(1494, 'x');
    ASSERT_EQ(datagram.size(), 1500u);
    network.ExpectAny().Answer(datagram);
    EXPECT_EQ(Send("10 08"), 1500);
    EXPECT_EQ(apdu, Octets(1494, 'x'));
}

TEST_F(Exchange, DatagramOf1501OctetsIsCutAndASizeError) {
    EXPECT_EQ(ErrorFor("81 0A 05 DD 01 00" + std::string(2 * 1495, '7')), "packet size error");
    EXPECT_EQ(ToHex(apdu), "AA BB");
}

TEST_F(Exchange, BroadcastAnswerIsTaken) {
    network.ExpectAny().Answer("81 0B 00 07 01 00 55");
    Send("10 08");
    EXPECT_EQ(ToHex(apdu), "55");
}

TEST_F(Exchange, AnswerOfAnotherBvlcTypeIsAFormatError) {
    EXPECT_EQ(ErrorFor("82 0A 00 07 01 00 55"), "packet format error");
}

TEST_F(Exchange, AnswerOfAnotherBvlcFunctionIsAFormatErrorAndNoHang) {
    EXPECT_EQ(ErrorFor("81 00 00 06 00 30"), "packet format error");
    EXPECT_EQ(ErrorFor("81 04 00 0D C0 A8 0A 07 BA C0 01 00 55"), "packet format error");
    EXPECT_EQ(ToHex(apdu), "AA BB");
}

TEST_F(Exchange, LengthFieldThatDiffersByOneIsASizeError) {
    EXPECT_EQ(ErrorFor("81 0A 00 06 01 00 55"), "packet size error");
    EXPECT_EQ(ErrorFor("81 0A 00 08 01 00 55"), "packet size error");
}

TEST_F(Exchange, AnswerOfLessThan4OctetsIsAFormatError) {
    EXPECT_EQ(ErrorFor("81"), "packet format error");
    EXPECT_EQ(ErrorFor("81 0A"), "packet format error");
    EXPECT_EQ(ErrorFor("81 0A 00"), "packet format error");
}

TEST_F(Exchange, BadNpduThrowsAsTheNetworkLayerDoes) {
    EXPECT_EQ(ErrorFor("81 0A 00 06 02 00"), "Wrong protocol version");
}

TEST_F(Exchange, ReceiveSendsNothingAndTakesAFurtherDatagram) {
    network.ExpectAny().Answer("81 0A 00 07 01 00 55").Answer("81 0A 00 07 01 00 66", 30);
    Send("10 08");
    EXPECT_EQ(ToHex(apdu), "55");
    EXPECT_EQ(device->Receive(apdu), 7);
    EXPECT_EQ(ToHex(apdu), "66");
    EXPECT_EQ(network.SentDatagrams().size(), 1u);
}

TEST_F(Exchange, ReceiveWaitsAndLeavesTheApduWhenNothingComes) {
    EXPECT_LE(device->Receive(apdu), 0);
    EXPECT_EQ(ToHex(apdu), "AA BB");
    EXPECT_EQ(network.Elapsed(), 1000);
}

TEST_F(Exchange, ReceiveUnwrapsAsSendAndReceiveDoes) {
    network.Deliver(Hex("81 0A 00 06 01 00 55"));
    EXPECT_THROW(device->Receive(apdu), std::runtime_error);
}

TEST_F(Exchange, SendAndReceiveTakesAnEarlierDatagramAsTheAnswer) {
    network.Deliver(Hex("81 0A 00 07 01 00 77"));
    network.ExpectAny().Answer("81 0A 00 07 01 00 55");
    Send("10 08");
    EXPECT_EQ(ToHex(apdu), "77");
}

}  // namespace
