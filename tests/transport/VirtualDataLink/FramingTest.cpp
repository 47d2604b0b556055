#include "VirtualDataLink/Framing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>

#include "../ScriptedUdpSocket.h"
#include "Exceptions.h"
#include "Hex.h"

using test::Hex;
using test::Octets;
using test::RuntimeErrorOf;
using test::ToHex;
using VirtualDataLink::Frame;
using VirtualDataLink::Unframe;

namespace {

std::string HeaderOfNpduOf(std::size_t size) {
    auto octets = Frame({VmacAddress(false), Octets(size)}).data;
    EXPECT_EQ(octets.size(), size + 4);
    octets.resize(4);
    return ToHex(octets);
}

}  // namespace

TEST(Framing, NpduOfSixOctetsGivesALengthOfTen) {
    auto const packet = Frame({VmacAddress(Hex("C0 A8 0A 01 BA C0"), false), Hex("01 04 02 45 00 0E")});
    EXPECT_EQ(ToHex(packet.data), "81 0A 00 0A 01 04 02 45 00 0E");
    EXPECT_EQ(packet.address.address, 0xC0A80A01u);
    EXPECT_EQ(packet.address.port, 47808);
}

TEST(Framing, LengthOctetsDepartFromTheStandardFrom256OctetsUp) {
    EXPECT_EQ(HeaderOfNpduOf(251), "81 0A 00 FF");
    EXPECT_EQ(HeaderOfNpduOf(252), "81 0A 10 00");
    EXPECT_EQ(HeaderOfNpduOf(1496), "81 0A 50 DC");
}

TEST(Framing, LengthIsCutToSixteenBits) {
    EXPECT_EQ(HeaderOfNpduOf(65532), "81 0A 00 00");
    EXPECT_EQ(HeaderOfNpduOf(65540), "81 0A 00 08");
}

TEST(Framing, ReceivedLengthIsAPlainSixteenBitNumber) {
    Octets datagram(0x0104);
    Octets const header = Hex("81 0A 01 04");
    std::copy(header.begin(), header.end(), datagram.begin());
    EXPECT_EQ(Unframe(datagram)->size(), 0x0100u);

    datagram[2] = 0x10;
    EXPECT_EQ(RuntimeErrorOf([&] { Unframe(datagram); }), "packet size error");
}

TEST(Framing, FewerThanFourOctetsAreRefused) {
    for (char const* datagram : {"", "81", "81 0A", "81 0A 00", "81 04 00"}) {
        EXPECT_EQ(RuntimeErrorOf([&] { Unframe(Hex(datagram)); }), "packet format error") << datagram;
    }
}

TEST(Framing, TestsTypeThenFunctionThenLength) {
    EXPECT_EQ(RuntimeErrorOf([] { Unframe(Hex("82 04 00 63")); }), "packet format error");
    EXPECT_FALSE(Unframe(Hex("81 04 00 63")).has_value());
    EXPECT_EQ(RuntimeErrorOf([] { Unframe(Hex("81 0A 00 63")); }), "packet size error");
}

TEST(Framing, OnlyTheTwoOriginalFunctionsCarryAnNpdu) {
    for (unsigned function = 0; function < 256; ++function) {
        Octets datagram = Hex("81 00 00 05 2A");
        datagram[1] = static_cast<char>(function);
        auto const npdu = Unframe(datagram);
        ASSERT_EQ(npdu.has_value(), function == 0x0A || function == 0x0B) << function;
        if (npdu) {
            EXPECT_EQ(ToHex(*npdu), "2A");
        }
    }
}

TEST(Framing, FormatErrorsAreNotParseExceptions) {
    for (char const* datagram : {"01 0A 00 04", "81 0A 00 05"}) {
        try {
            Unframe(Hex(datagram));
            FAIL() << datagram;
        } catch (ParseException const&) {
            FAIL() << "a handler of parse errors must not see it";
        } catch (std::runtime_error const&) {
        }
    }
}

TEST(Framing, UnframesWhatItFramedUpTo255Octets) {
    std::mt19937 random(33);
    for (int i = 0; i < 10000; ++i) {
        Octets npdu(random() % 300);
        for (char& octet : npdu) {
            octet = static_cast<char>(random());
        }
        auto const datagram = Frame({VmacAddress(random() % 2 == 0), npdu}).data;
        if (datagram.size() < 256) {
            ASSERT_EQ(Unframe(datagram), npdu);
        } else {
            ASSERT_EQ(RuntimeErrorOf([&] { Unframe(datagram); }), "packet size error");
        }
    }
}
