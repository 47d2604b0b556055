#include "Bvlc.h"

#include "CutOff.h"

using namespace standard;
using test::ExpectNoneWhenCutOff;
using test::Hex;
using test::ToHex;

namespace {

constexpr Endpoint Sender{0x0A000001, 47808};

}  // namespace

TEST(Bvlc, FramesAnNpduForOneStationOrForAll) {
    EXPECT_EQ(ToHex(bvlc::Unicast(Hex("01 00 10 08"))), "81 0A 00 08 01 00 10 08");
    EXPECT_EQ(ToHex(bvlc::Broadcast(Hex("01 00 10 08"))), "81 0B 00 08 01 00 10 08");
    auto const unicast = bvlc::Receive({Sender, Hex("81 0A 00 06 01 00")}).message;
    ASSERT_TRUE(unicast);
    EXPECT_FALSE(unicast->isBroadcast);
    EXPECT_TRUE(bvlc::Receive({Sender, Hex("81 0B 00 06 01 00")}).message->isBroadcast);
}

TEST(Bvlc, AForwardedNpduComesFromItsOriginator) {
    Endpoint const originator{0xC0A80102, 0xBAC1};
    auto const datagram = bvlc::Forwarded(originator, Hex("01 00"));
    EXPECT_EQ(ToHex(datagram), "81 04 00 0C C0 A8 01 02 BA C1 01 00");
    auto const message = bvlc::Receive({Sender, datagram}).message;
    ASSERT_TRUE(message);
    EXPECT_EQ(message->source, originator);
    EXPECT_TRUE(message->isBroadcast);
    EXPECT_EQ(ToHex(message->npdu), "01 00");
}

TEST(Bvlc, AForeignDeviceRegistersAndDistributes) {
    EXPECT_EQ(ToHex(bvlc::RegisterForeignDevice(300)), "81 05 00 06 01 2C");
    EXPECT_EQ(bvlc::RegisteredSeconds(Hex("81 05 00 06 01 2C")), 300);
    EXPECT_EQ(ToHex(bvlc::DistributeBroadcast(Hex("01 00 10 08"))), "81 09 00 08 01 00 10 08");
    auto const npdu = bvlc::DistributedNpdu(Hex("81 09 00 08 01 00 10 08"));
    ASSERT_TRUE(npdu);
    EXPECT_EQ(ToHex(*npdu), "01 00 10 08");
    EXPECT_FALSE(bvlc::DistributedNpdu(Hex("81 0B 00 08 01 00 10 08")));
    ExpectNoneWhenCutOff("81 05 00 06 01 2C", {}, bvlc::RegisteredSeconds);
    ExpectNoneWhenCutOff("81 09 00 08 01 00 10 08", {}, bvlc::DistributedNpdu);
}

TEST(Bvlc, AResultHasACodeWithAName) {
    EXPECT_EQ(ToHex(bvlc::ResultOf(0x30)), "81 00 00 06 00 30");
    EXPECT_EQ(bvlc::ResultCodeOf(Hex("81 00 00 06 00 30")), bvlc::RegisterForeignDeviceNak);
    EXPECT_FALSE(bvlc::ResultCodeOf(Hex("81 00 00 07 00 30 00")));
    EXPECT_FALSE(bvlc::ResultCodeOf(Hex("82 00 00 06 00 30")));
    EXPECT_FALSE(bvlc::ResultCodeOf(Hex("81 05 00 06 00 30")));
    ExpectNoneWhenCutOff("81 00 00 06 00 30", {}, bvlc::ResultCodeOf);
    EXPECT_EQ(bvlc::ResultText(0), "success");
    EXPECT_EQ(bvlc::ResultText(0x30), "Register-Foreign-Device NAK");
    EXPECT_EQ(bvlc::ResultText(0x60), "Distribute-Broadcast-To-Network NAK");
    EXPECT_EQ(bvlc::ResultText(0x7A), "result code 0x007A");
}

TEST(Bvlc, ADeviceThatIsNotABbmdAnswersItsFunctionsWithTheirNak) {
    struct Row {
        char const* request;
        char const* answer;
    };
    for (Row const& row :
         {Row{"81 01 00 04", "81 00 00 06 00 10"}, Row{"81 02 00 04", "81 00 00 06 00 20"},
          Row{"81 05 00 06 00 3C", "81 00 00 06 00 30"}, Row{"81 06 00 04", "81 00 00 06 00 40"},
          Row{"81 08 00 0A 0A 00 00 01 BA C0", "81 00 00 06 00 50"},
          Row{"81 09 00 06 01 00", "81 00 00 06 00 60"}}) {
        bvlc::Result const result = bvlc::Receive({Sender, Hex(row.request)});
        EXPECT_FALSE(result.message);
        ASSERT_TRUE(result.answer) << row.request;
        EXPECT_EQ(ToHex(*result.answer), row.answer);
    }
}

TEST(Bvlc, RandomDatagramsAreDroppedOrHaveOneMeaning) {
    std::mt19937 random(5);
    char const* const texts[] = {"81 05 00 06 01 2C", "81 09 00 08 01 00 10 08", "81 00 00 06 00 30",
                                 "81 04 00 0C C0 A8 01 02 BA C1 01 00"};
    for (int i = 0; i < 20000; ++i) {
        test::Octets const octets = test::RandomOctets(random, texts[i % 4], 16);
        bvlc::Result const result = bvlc::Receive({Sender, octets});
        int const meanings = (result.message ? 1 : 0) + (bvlc::ResultCodeOf(octets) ? 1 : 0) +
                             (bvlc::RegisteredSeconds(octets) ? 1 : 0) +
                             (bvlc::DistributedNpdu(octets) ? 1 : 0);
        EXPECT_LE(meanings, 1) << test::ToHex(octets);
    }
}
