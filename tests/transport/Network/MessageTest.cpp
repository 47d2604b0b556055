#include "Network/Message.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>

#include "../ScriptedUdpSocket.h"
#include "Exceptions.h"
#include "Hex.h"
#include "Network/NDataUnitRequest.h"

using test::Hex;
using test::Octets;
using test::RuntimeErrorOf;
using test::ToHex;
using test::operator+;
using Network::Message;

TEST(NetworkMessage, ParsesALocalApduAndLosesThePriority) {
    auto const message = Message::Parse(Hex("01 00 30 01 0C"));
    auto const& information = message.controlInformation;
    EXPECT_FALSE(information.isNetworkMessage || information.hasDestination || information.hasSource ||
                 information.expectingReply);
    EXPECT_EQ(ToHex(message.data), "30 01 0C");
    EXPECT_EQ(Message::Parse(Hex("01 03")).controlInformation.priority, 0u);
}

TEST(NetworkMessage, ParsesAnAnswerFromBehindARouter) {
    auto const message = Message::Parse(Hex("01 08 00 07 01 2A 30 01"));
    auto const& information = message.controlInformation;
    EXPECT_TRUE(information.hasSource);
    EXPECT_EQ(information.source.network, 7);
    EXPECT_EQ(ToHex(information.source.bytes), "2A");
    EXPECT_EQ(information.hopCount, 0);
    EXPECT_EQ(ToHex(message.data), "30 01");
}

TEST(NetworkMessage, ParsesMessageTypesAndOneVendorOctet) {
    auto const standard = Message::Parse(Hex("01 80 12 AA BB"));
    EXPECT_TRUE(standard.controlInformation.isNetworkMessage);
    EXPECT_EQ(standard.controlInformation.messageType, 0x12);
    EXPECT_EQ(ToHex(standard.data), "AA BB");

    auto const proprietary = Message::Parse(Hex("01 80 81 AA BB"));
    EXPECT_EQ(proprietary.controlInformation.messageType, 0x81);
    EXPECT_EQ(proprietary.controlInformation.vendor, 0xAA);
    EXPECT_EQ(ToHex(proprietary.data), "BB");

    EXPECT_EQ(ToHex(Message::Parse(Hex("01 80 7F AA")).data), "AA");
    EXPECT_EQ(ToHex(Message::Parse(Hex("01 80 80 AA")).data), "");
}

TEST(NetworkMessage, RefusesAnotherVersion) {
    EXPECT_EQ(RuntimeErrorOf([] { Message::Parse(Hex("02 00")); }), "Wrong protocol version");
    EXPECT_EQ(RuntimeErrorOf([] { Message::Parse(Hex("81")); }), "Wrong protocol version");
    EXPECT_FALSE(RuntimeErrorOf([] { Message::Parse({}); }).empty());
}

TEST(NetworkMessage, ReadsDestinationSourceAndHopCountInThisOrder) {
    auto const message = Message::Parse(Hex("01 2C 01 02 01 AA FF FE 02 BB CC FE 30"));
    auto const& information = message.controlInformation;
    EXPECT_TRUE(information.expectingReply);
    EXPECT_EQ(information.destination.network, 0x0102);
    EXPECT_EQ(ToHex(information.destination.bytes), "AA");
    EXPECT_EQ(information.source.network, 0xFFFE);
    EXPECT_EQ(ToHex(information.source.bytes), "BB CC");
    EXPECT_EQ(information.hopCount, 0xFE);
    EXPECT_EQ(ToHex(message.data), "30");
}

TEST(NetworkMessage, IgnoresReservedControlBits) {
    auto const message = Message::Parse(Hex("01 50 30"));
    EXPECT_EQ(message.controlInformation.priority, 0u);
    EXPECT_EQ(ToHex(message.data), "30");
}

TEST(NetworkMessage, ParseAddressTakesAsManyOctetsAsAnUnsignedLengthSays) {
    std::deque<char> queue{0, 5, static_cast<char>(0xFF)};
    queue.insert(queue.end(), 256, 0x11);
    auto const address = Message::ParseAddress(queue);
    EXPECT_EQ(address.network, 5);
    EXPECT_EQ(address.bytes, Octets(255, 0x11));
    EXPECT_EQ(queue.size(), 1u);

    std::deque<char> broadcast{0, 5, 0};
    EXPECT_TRUE(Message::ParseAddress(broadcast).bytes.empty());
}

TEST(NetworkMessage, TruncatedAnywhereInTheHeaderIsAParseError) {
    auto const whole = Hex("01 A8 00 05 02 0A 14 00 07 01 2A FF 81 AA");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_THROW(Message::Parse({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)}),
                     ParseException)
            << length;
    }
    EXPECT_EQ(ToHex(Message::Parse(whole).data), "");
}

TEST(NetworkMessage, WritingTheParsedHeaderGivesTheSameOctets) {
    std::mt19937 random(34);
    int parsed = 0;
    for (int i = 0; i < 10000; ++i) {
        Octets npdu(2 + random() % 40);
        for (char& octet : npdu) {
            octet = static_cast<char>(random() % 4 ? random() % 4 : random());
        }
        npdu[0] = 1;
        // The bits that are written again: destination, source and expecting reply.
        npdu[1] = static_cast<char>(random() & 0x2C);
        try {
            auto const message = Message::Parse(npdu);
            ASSERT_EQ(ToHex(message.controlInformation.GetBytes() + message.data), ToHex(npdu));
            ++parsed;
        } catch (ParseException const&) {
        }
    }
    EXPECT_GT(parsed, 5000);
}

TEST(NetworkMessage, AnyOctetsParseOrAreRefused) {
    std::mt19937 random(35);
    int parsed = 0;
    for (int i = 0; i < 10000; ++i) {
        Octets npdu(random() % 64);
        for (char& octet : npdu) {
            octet = static_cast<char>(random());
        }
        if (!npdu.empty() && i % 8) {
            npdu[0] = 1;
        }
        try {
            auto const message = Message::Parse(npdu);
            ASSERT_LE(message.data.size() + 2, npdu.size());
            ASSERT_TRUE(std::equal(message.data.rbegin(), message.data.rend(), npdu.rbegin()));
            ++parsed;
        } catch (std::runtime_error const&) {
        }
    }
    EXPECT_GT(parsed, 1000);
}
