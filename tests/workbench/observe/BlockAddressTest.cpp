#include "BlockAddress.h"

#include <gtest/gtest.h>

#include "HexText.h"

using namespace workbench;

namespace {

BlockConfig Block(std::string const& address, std::string const& mac, long long network) {
    BlockConfig block;
    block.address = address;
    block.fields = {{"Address", address}, {"MAC", mac}, {"NetworkNumber", network}};
    return block;
}

std::string MacOf(std::string const& text) {
    auto const peer = PeerOf(Block("192.168.1.1:47808", text, 5));
    return peer.remote ? tools::HexText(peer.remote->mac, tools::HexDigits::Upper) : "local";
}

}  // namespace

TEST(BlockAddress, ALocalDeviceIsAtTheAddress) {
    auto const peer = PeerOf(Block("192.168.1.20:47809", "192.168.1.99:47808", 0));
    EXPECT_FALSE(peer.remote);
    EXPECT_EQ(PeerText(peer), "192.168.1.20:47809");
}

TEST(BlockAddress, ADeviceBehindARouterIsAtItsNetworkAndMac) {
    EXPECT_EQ(PeerText(PeerOf(Block("192.168.1.1:47808", "10:20", 5))),
              "192.168.1.1:47808, network 5, address 0A14");
    EXPECT_EQ(PeerText(PeerOf(Block("192.168.1.1:47808", "", 5))),
              "192.168.1.1:47808, network 5, all stations");
}

TEST(BlockAddress, EveryFormOfAMacIsRead) {
    EXPECT_EQ(MacOf("5"), "05");
    EXPECT_EQ(MacOf("255"), "FF");
    EXPECT_EQ(MacOf("256"), "000100000000");
    EXPECT_EQ(MacOf("70000"), "701101000000");
    EXPECT_EQ(MacOf("10:20"), "0A14");
    EXPECT_EQ(MacOf("192.168.10.1"), "C0A80A01BAC0");
    EXPECT_EQ(MacOf("192.168.10.1:47809"), "C0A80A01BAC1");
    EXPECT_EQ(MacOf(""), "");
}

TEST(BlockAddress, WithoutAMacTheDriversDefaultIsUsed) {
    BlockConfig block = Block("192.168.1.1:47808", "", 5);
    block.fields.erase(block.fields.begin() + 1);
    EXPECT_EQ(PeerText(PeerOf(block)), "192.168.1.1:47808, network 5, address FFFFFFFFBAC0");
}
