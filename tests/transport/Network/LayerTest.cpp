#include "Network/Layer.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "../ScriptedUdpSocket.h"
#include "Hex.h"
#include "VirtualDataLink/Layer.h"

using test::Hex;
using test::RuntimeErrorOf;
using test::ScriptedUdpSocket;
using test::ToHex;
using test::UdpScript;

namespace {

class NetworkLayer : public testing::Test {
protected:
    void Deliver(char const* datagram) { script.incoming.push_back({{47808, 0xC0A80A01}, Hex(datagram)}); }

    UdpScript script;
    Network::Layer layer{new VirtualDataLink::Layer(new ScriptedUdpSocket(script))};
};

}  // namespace

TEST_F(NetworkLayer, SendsALocalRequestToThePhysicalDestination) {
    Network::NDataUnitRequest request;
    request.data = Hex("30 01 0C");
    request.expectingReply = true;
    request.physicalDestination = Hex("C0 A8 0A 01 BA C0");
    layer.Send(request);
    ASSERT_EQ(script.sent.size(), 1u);
    EXPECT_EQ(ToHex(script.sent[0].data), "81 0A 00 09 01 04 30 01 0C");
    EXPECT_EQ(script.sent[0].address.address, 0xC0A80A01u);
    EXPECT_EQ(script.sent[0].address.port, 47808);
}

TEST_F(NetworkLayer, SendsARemoteRequestToTheRouterAsUnicast) {
    Network::NDataUnitRequest request;
    request.data = Hex("30");
    request.expectingReply = true;
    request.hasDestination = true;
    request.destination = {Hex("0A 14"), 5};
    request.physicalDestination = Hex("FF FF FF FF BA C0");
    layer.Send(request);
    ASSERT_EQ(script.sent.size(), 1u);
    EXPECT_EQ(ToHex(script.sent[0].data), "81 0A 00 0D 01 24 00 05 02 0A 14 FF 30");
}

TEST_F(NetworkLayer, ReceivesSourceExpectingReplyAndDataOnly) {
    Deliver("81 0A 00 12 01 2F 00 05 01 AA 00 07 01 2A FE 30 01 0C");
    auto const indication = layer.Receive();
    EXPECT_EQ(ToHex(indication.physicalSource), "C0 A8 0A 01 BA C0");
    EXPECT_TRUE(indication.hasSource);
    EXPECT_EQ(indication.source.network, 7);
    EXPECT_EQ(ToHex(indication.source.bytes), "2A");
    EXPECT_TRUE(indication.expectingReply);
    EXPECT_EQ(ToHex(indication.data), "30 01 0C");
    EXPECT_EQ(indication.priority, 0u);
    EXPECT_FALSE(indication.hasDestination);
    EXPECT_TRUE(indication.destination.bytes.empty());
    EXPECT_TRUE(indication.physicalDestination.empty());
}

TEST_F(NetworkLayer, SourceAndExpectingReplyAreDistinguished) {
    Deliver("81 0A 00 07 01 04 30");
    auto const local = layer.Receive();
    EXPECT_TRUE(local.expectingReply);
    EXPECT_FALSE(local.hasSource);
    Deliver("81 0A 00 0B 01 08 00 07 01 2A 30");
    auto const routed = layer.Receive();
    EXPECT_FALSE(routed.expectingReply);
    EXPECT_TRUE(routed.hasSource);
}

TEST_F(NetworkLayer, NetworkMessagesAreReturnedLikeAnApdu) {
    Deliver("81 0A 00 09 01 80 01 00 05");
    EXPECT_EQ(ToHex(layer.Receive().data), "00 05");
    EXPECT_TRUE(script.sent.empty()) << "no answer is sent";
}

TEST_F(NetworkLayer, PassesOnExceptionsOfTheLayersBelow) {
    Deliver("81 0A 00 06 02 00");
    EXPECT_EQ(RuntimeErrorOf([this] { layer.Receive(); }), "Wrong protocol version");
    Deliver("81 0A 00 07 01 00");
    EXPECT_EQ(RuntimeErrorOf([this] { layer.Receive(); }), "packet size error");
}

TEST_F(NetworkLayer, ResolvedNameGetsTheGivenPort) {
    script.resolved = {1, 0x0A000001};
    EXPECT_EQ(ToHex(layer.ResolveHostName("router", 47809)), "0A 00 00 01 BA C1");
    EXPECT_EQ(script.names, std::vector<std::string>{"router"});
}

TEST(NetworkLayerOwnership, DestroysItsDataLink) {
    UdpScript script;
    { Network::Layer const layer(new VirtualDataLink::Layer(new ScriptedUdpSocket(script))); }
    EXPECT_EQ(script.destroyed, 1);
    EXPECT_TRUE(std::has_virtual_destructor<Network::Layer>::value);
}

TEST(NetworkLayerOwnership, DefaultLayerReportsThatItHasNoSocket) {
    std::unique_ptr<Network::Layer> const layer(Network::Layer::GetDefault());
    EXPECT_EQ(RuntimeErrorOf([&] { layer->Send({}); }), "data link layer has no socket");
    EXPECT_EQ(RuntimeErrorOf([&] { layer->Receive(); }), "data link layer has no socket");
}

TEST(NetworkLayerOwnership, LayerWithoutADataLinkReportsIt) {
    Network::Layer layer(nullptr);
    EXPECT_EQ(RuntimeErrorOf([&] { layer.Receive(); }), "network layer has no data link");
    EXPECT_EQ(RuntimeErrorOf([&] { layer.ResolveHostName("x", 1); }), "network layer has no data link");
}
