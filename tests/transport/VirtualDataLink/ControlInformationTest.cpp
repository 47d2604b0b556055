#include "VirtualDataLink/ControlInformation.h"

#include <gtest/gtest.h>

#include "Hex.h"
#include "VirtualDataLink/ProtocolMessage.h"

using test::Hex;
using test::ToHex;

namespace {

std::string Header(unsigned char function, unsigned short length) {
    VirtualDataLink::ControlInformation information;
    information.function = function;
    information.length = length;
    return ToHex(information.GetBytes());
}

}  // namespace

TEST(BvlcControlInformation, WritesTypeFunctionAndLength) {
    EXPECT_EQ(Header(0x0A, 0x000A), "81 0A 00 0A");
    EXPECT_EQ(Header(0x0B, 0x00FF), "81 0B 00 FF");
    EXPECT_EQ(Header(0x00, 0x0000), "81 00 00 00");
}

TEST(BvlcControlInformation, PutsLengthBitsEightToElevenInTheUpperHalfOfTheOctet) {
    EXPECT_EQ(Header(0x0A, 0x0100), "81 0A 10 00");
    EXPECT_EQ(Header(0x0A, 0x0104), "81 0A 10 04");
    EXPECT_EQ(Header(0x0A, 0x0F34), "81 0A F0 34");
}

TEST(BvlcControlInformation, LosesLengthBitsTwelveToFifteen) {
    EXPECT_EQ(Header(0x0A, 0xF000), "81 0A 00 00");
    EXPECT_EQ(Header(0x0A, 0xFFFF), "81 0A F0 FF");
}

TEST(BvlcProtocolMessage, IsTheHeaderFollowedByTheData) {
    VirtualDataLink::ProtocolMessage message;
    message.controlInformation.function = VirtualDataLink::OriginalBroadcastNpdu;
    message.controlInformation.length = 6;
    message.data = Hex("01 04");
    EXPECT_EQ(ToHex(message.GetBytes()), "81 0B 00 06 01 04");
}
