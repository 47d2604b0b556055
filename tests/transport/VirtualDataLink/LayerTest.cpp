#include "VirtualDataLink/Layer.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "../ScriptedUdpSocket.h"
#include "Hex.h"

using test::Hex;
using test::RuntimeErrorOf;
using test::ScriptedUdpSocket;
using test::ToHex;
using test::UdpScript;

namespace {

class DataLinkLayer : public testing::Test {
protected:
    void Deliver(char const* datagram) { script.incoming.push_back({{47808, 0xC0A80A01}, Hex(datagram)}); }

    UdpScript script;
    VirtualDataLink::Layer layer{new ScriptedUdpSocket(script)};
};

}  // namespace

TEST_F(DataLinkLayer, SendsAnOriginalUnicastToTheDestination) {
    layer.Send({VmacAddress(Hex("C0 A8 0A 01 BA C1"), false), Hex("01 04 02 45 00 0E")});
    ASSERT_EQ(script.sent.size(), 1u);
    EXPECT_EQ(ToHex(script.sent[0].data), "81 0A 00 0A 01 04 02 45 00 0E");
    EXPECT_EQ(script.sent[0].address.address, 0xC0A80A01u);
    EXPECT_EQ(script.sent[0].address.port, 47809);
}

TEST_F(DataLinkLayer, BroadcastDestinationGivesFunctionElevenAndAssignmentKeepsIt) {
    VmacAddress destination(true);
    layer.Send({destination, Hex("01 04")});
    destination = VmacAddress(Hex("01 02 03 04 05 06"), false);
    layer.Send({destination, Hex("01 04")});
    ASSERT_EQ(script.sent.size(), 2u);
    EXPECT_EQ(ToHex(script.sent[0].data), "81 0B 00 06 01 04");
    EXPECT_EQ(ToHex(script.sent[1].data), "81 0B 00 06 01 04");
    EXPECT_EQ(script.sent[1].address.address, 0x01020304u);
}

TEST_F(DataLinkLayer, SendsPlainOctetsToPort15WithoutAHeader) {
    layer.Send(Hex("DE AD"));
    ASSERT_EQ(script.sent.size(), 1u);
    EXPECT_EQ(ToHex(script.sent[0].data), "DE AD");
    EXPECT_EQ(script.sent[0].address.port, 15);
}

TEST_F(DataLinkLayer, ReceivesAnOriginalBroadcastJustLikeAUnicast) {
    Deliver("81 0A 00 06 01 00");
    Deliver("81 0B 00 06 01 00");
    for (int i = 0; i < 2; ++i) {
        auto const indication = layer.Receive();
        EXPECT_EQ(ToHex(indication.data), "01 00");
        EXPECT_EQ(ToHex(indication.address.GetBytes()), "C0 A8 0A 01 BA C0");
        EXPECT_FALSE(indication.address.IsBroadCast());
    }
}

TEST_F(DataLinkLayer, SkipsAForwardedNpduBetweenTwoGoodFrames) {
    Deliver("81 0A 00 05 01");
    Deliver("81 04 00 0B C0 A8 00 01 BA C0 02");
    Deliver("81 00 00 06 00 00");
    Deliver("81 0A 00 05 03");
    EXPECT_EQ(ToHex(layer.Receive().data), "01");
    EXPECT_EQ(ToHex(layer.Receive().data), "03");
    EXPECT_TRUE(script.incoming.empty());
}

TEST_F(DataLinkLayer, LengthFieldOfEightInADatagramOfNineIsRefused) {
    Deliver("81 0A 00 08 01 02 03 04 05");
    Deliver("81 0A 00 05 2A");
    EXPECT_EQ(RuntimeErrorOf([this] { layer.Receive(); }), "packet size error");
    EXPECT_EQ(ToHex(layer.Receive().data), "2A") << "only the bad frame is lost";
}

TEST_F(DataLinkLayer, WrongTypeOrShortDatagramIsRefused) {
    for (char const* datagram : {"80 0A 00 05 01", "", "81 0A 00"}) {
        Deliver(datagram);
        EXPECT_EQ(RuntimeErrorOf([this] { layer.Receive(); }), "packet format error") << datagram;
    }
}

TEST_F(DataLinkLayer, ExceptionsOfTheSocketPassThrough) {
    Deliver("81 04 00 04");
    EXPECT_THROW(layer.Receive(), std::out_of_range);
}

TEST_F(DataLinkLayer, UsesTheSocketForNamesAndTimeouts) {
    script.resolved = {47809, 0x0A000001};
    auto const address = layer.ResolveHostName("controller");
    EXPECT_EQ(ToHex(address.GetBytes()), "0A 00 00 01 BA C1");
    EXPECT_FALSE(address.IsBroadCast());
    EXPECT_EQ(script.names, std::vector<std::string>{"controller"});
    layer.SetTimeout(250);
    EXPECT_EQ(script.timeouts, std::vector<int>{250});
}

TEST(DataLinkLayerOwnership, DestroysItsSocket) {
    UdpScript script;
    { VirtualDataLink::Layer const layer(new ScriptedUdpSocket(script)); }
    EXPECT_EQ(script.destroyed, 1);
}

TEST(DataLinkLayerWithoutSocket, RefusesEveryOperation) {
    auto const layer = VirtualDataLink::Layer::GetDefault();
    char const* const text = "data link layer has no socket";
    EXPECT_EQ(RuntimeErrorOf([&] { layer->Send({VmacAddress(false), Hex("01")}); }), text);
    EXPECT_EQ(RuntimeErrorOf([&] { layer->Send(Hex("01")); }), text);
    EXPECT_EQ(RuntimeErrorOf([&] { layer->Receive(); }), text);
    EXPECT_EQ(RuntimeErrorOf([&] { layer->ResolveHostName("x"); }), text);
    EXPECT_EQ(RuntimeErrorOf([&] { layer->SetTimeout(1); }), text);
}

TEST(DataLinkLayerWithoutSocket, IsTheDefaultOfTheInterface) {
    std::unique_ptr<VirtualDataLink::IDataLinkLayer> const layer(
        VirtualDataLink::IDataLinkLayer::GetDefault());
    ASSERT_NE(dynamic_cast<VirtualDataLink::Layer*>(layer.get()), nullptr);
    EXPECT_THROW(layer->Receive(), std::runtime_error);
}
