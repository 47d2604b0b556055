#include <gtest/gtest.h>

#include <random>

#include "CutOff.h"
#include "Discovery.h"
#include "DiscoveryDialogue.h"
#include "ScriptedLink.h"

using namespace standard;
using std::chrono::milliseconds;
using test::Everyone;
using test::Hex;
using test::IAm7;
using test::IAm9OfNetwork5;
using test::IAmRouterTo5;
using test::Router;
using test::ScriptedLink;
using test::ToHex;
using test::Whole;

namespace {

constexpr Endpoint Bbmd{0x0A000009, 47808};
char const* const IAm7Of206 = "81 0A 00 13 01 00 10 00 C4 02 00 00 07 21 CE 91 03 21 0F";
char const* const IAm8 = "81 0A 00 14 01 00 10 00 C4 02 00 00 08 22 05 C4 91 00 21 0F";
char const* const Registration = "81 05 00 06 00 96";

DiscoverySettings Settings(DiscoverySettings::Way way = DiscoverySettings::Way::Broadcast) {
    DiscoverySettings settings;
    settings.way = way;
    settings.target = way == DiscoverySettings::Way::ForeignDevice ? Bbmd : Everyone;
    return settings;
}

// Answers every datagram with some that the seed chooses, for ever.
class NoisyLink : public ScriptedLink {
public:
    explicit NoisyLink(unsigned seed) : random(seed) {}

protected:
    void OnSend(Datagram const&) override {
        char const* const texts[] = {IAm7, IAm9OfNetwork5, IAmRouterTo5, Registration};
        for (unsigned i = 0; i < 4; ++i) {
            test::Octets octets = test::RandomOctets(random, texts[random() % 4], 32);
            if (octets.size() >= 4 && random() % 2 == 0) {
                octets[2] = 0;
                octets[3] = static_cast<char>(octets.size());
            }
            Deliver({octets, milliseconds(random() % 2000), random() % 2 == 0 ? Router : Bbmd});
        }
    }

private:
    std::mt19937 random;
};

}  // namespace

TEST(DiscoveryTrouble, AForeignDeviceRegistersAndLetsTheBbmdDistribute) {
    ScriptedLink link;
    link.Then({Whole("81 00 00 06 00 00", 10, Bbmd)})
        .Then({})
        .Then({Whole("81 04 00 1A C0 A8 01 02 BA C0 01 00 10 00 C4 02 00 00 08 22 05 C4 91 00 21 0F", 30,
                     Bbmd)});
    DiscoveryResult const result = Discovery(link, Settings(DiscoverySettings::Way::ForeignDevice)).Run();
    ASSERT_EQ(link.sent.size(), 5u);
    EXPECT_EQ(ToHex(link.sent[0].octets), Registration);
    EXPECT_EQ(ToHex(link.sent[1].octets), "81 09 00 07 01 80 00");
    EXPECT_EQ(ToHex(link.sent[2].octets), "81 09 00 0C 01 20 FF FF 00 FF 10 08");
    EXPECT_EQ(ToHex(link.sent[4].octets), "81 09 00 08 01 00 10 08");
    for (Datagram const& datagram : link.sent) {
        EXPECT_EQ(datagram.peer, Bbmd);
    }
    ASSERT_EQ(result.devices.size(), 1u);
    EXPECT_EQ(result.devices[0].peer.endpoint, (Endpoint{0xC0A80102, 47808}));
    EXPECT_TRUE(result.failure.empty());
}

TEST(DiscoveryTrouble, ABbmdThatRegistersNobodyIsAFailure) {
    ScriptedLink link;
    link.Then({Whole("81 00 00 06 00 30", 5, Router), Whole("81 00 00 06 00 30", 10, Bbmd)});
    DiscoveryResult const result = Discovery(link, Settings(DiscoverySettings::Way::ForeignDevice)).Run();
    EXPECT_EQ(
        result.failure,
        "10.0.0.9:47808 answers with \"Register-Foreign-Device NAK\"; a BBMD that accepts foreign devices is "
        "needed: check the address, and whether the BBMD has a free entry for them");
    EXPECT_EQ(link.sent.size(), 1u);
    EXPECT_EQ(link.Elapsed(), milliseconds(10));
}

TEST(DiscoveryTrouble, ASilentBbmdIsAFailureAfterThreeAttempts) {
    ScriptedLink link;
    link.Then({Whole(IAm7)});
    DiscoveryResult const result = Discovery(link, Settings(DiscoverySettings::Way::ForeignDevice)).Run();
    EXPECT_EQ(result.failure,
              "10.0.0.9:47808 does not answer a Register-Foreign-Device; check the address of the BBMD");
    EXPECT_EQ(link.sent.size(), 3u);
    EXPECT_EQ(link.Elapsed(), milliseconds(6000));
    EXPECT_TRUE(result.devices.empty());
}

TEST(DiscoveryTrouble, ABbmdThatDistributesNothingIsAFailureThatKeepsTheDevices) {
    ScriptedLink link;
    link.Then({Whole("81 00 00 06 00 00", 10, Bbmd)})
        .Then({Whole("81 00 00 06 00 60", 10, Bbmd), Whole(IAm7, 20)});
    DiscoveryResult const result = Discovery(link, Settings(DiscoverySettings::Way::ForeignDevice)).Run();
    EXPECT_NE(result.failure.find("\"Distribute-Broadcast-To-Network NAK\""), std::string::npos);
    EXPECT_EQ(result.devices.size(), 1u);
}

TEST(DiscoveryTrouble, ADeviceThatAnswersTwiceIsNoted) {
    ScriptedLink link;
    link.Then({Whole(IAm7), Whole(IAm7, 11), Whole(IAm7Of206, 12), Whole(IAm8)});
    DiscoveryResult const result = Discovery(link, Settings()).Run();
    ASSERT_EQ(result.devices.size(), 2u);
    EXPECT_EQ(result.devices[0].answers, 3u);
    EXPECT_TRUE(result.devices[0].AnswersTooOften());
    EXPECT_TRUE(result.devices[0].isContradictory);
    EXPECT_EQ(result.devices[0].iAm.maxApdu, 1476u);
    EXPECT_FALSE(result.devices[1].AnswersTooOften());
    ASSERT_EQ(result.SharedAddresses().size(), 1u);
    EXPECT_EQ(result.SharedAddresses()[0], (std::vector<std::size_t>{0, 1}));
    EXPECT_TRUE(result.RepeatedInstances().empty());
}

TEST(DiscoveryTrouble, DevicesWithTheSameInstanceAreAllKept) {
    ScriptedLink link;
    link.Then({Whole(IAm8, 5), Whole(IAm7, 10, Bbmd), Whole(IAm7, 20), Whole(IAm9OfNetwork5, 30, Router),
               Whole(IAm9OfNetwork5, 40, Bbmd)});
    DiscoveryResult const result = Discovery(link, Settings()).Run();
    ASSERT_EQ(result.devices.size(), 5u);
    EXPECT_EQ(result.devices[0].peer.endpoint, test::DeviceEndpoint);
    EXPECT_EQ(result.devices[1].peer.endpoint, Bbmd);
    auto const repeated = result.RepeatedInstances();
    ASSERT_EQ(repeated.size(), 2u);
    EXPECT_EQ(repeated.at(7), (std::vector<std::size_t>{0, 1}));
    EXPECT_EQ(repeated.at(9), (std::vector<std::size_t>{3, 4}));
    EXPECT_FALSE(IsSameStation(result.devices[0].peer, result.devices[1].peer));
    EXPECT_TRUE(IsSameStation(result.devices[3].peer, result.devices[4].peer));
}

TEST(DiscoveryTrouble, TruncatedAnswersAreNoDevices) {
    test::Octets answer = Hex(IAm9OfNetwork5);
    answer.pop_back();
    for (; !answer.empty(); answer.pop_back()) {
        for (bool const isLengthRight : {false, true}) {
            test::Octets cut = answer;
            if (isLengthRight && cut.size() >= 4) {
                cut[3] = static_cast<char>(cut.size());
            }
            ScriptedLink link;
            link.Then({{cut}});
            EXPECT_TRUE(Discovery(link, Settings()).Run().devices.empty()) << ToHex(cut);
        }
    }
}

TEST(DiscoveryTrouble, AStopKeepsWhatWasFound) {
    ScriptedLink link;
    link.stopAfter = 3;
    link.Then({Whole(IAm7)});
    DiscoveryResult const result = Discovery(link, Settings()).Run();
    EXPECT_TRUE(result.isStopped);
    EXPECT_EQ(result.devices.size(), 1u);
    EXPECT_EQ(link.sent.size(), 3u);
}

TEST(DiscoveryTrouble, LimitsEndItAndAreReported) {
    ScriptedLink link;
    std::vector<ScriptedLink::Reply> replies(50, Whole(IAm7));
    replies.push_back(Whole(IAm8));
    link.Then(replies);
    DiscoverySettings settings = Settings();
    settings.mostDatagrams = 50;
    DiscoveryResult const few = Discovery(link, settings).Run();
    EXPECT_TRUE(few.hasReachedLimit);
    EXPECT_EQ(few.devices.at(0).answers, 50u);
    ScriptedLink again;
    again.Then({Whole(IAm7), Whole(IAm8), Whole(IAm7)});
    settings = Settings();
    settings.mostDevices = 1;
    DiscoveryResult const one = Discovery(again, settings).Run();
    EXPECT_TRUE(one.hasReachedLimit);
    ASSERT_EQ(one.devices.size(), 1u);
    EXPECT_EQ(one.devices[0].answers, 2u);
    ScriptedLink slow;
    settings = Settings();
    settings.longest = milliseconds(500);
    EXPECT_TRUE(Discovery(slow, settings).Run().hasReachedLimit);
    EXPECT_EQ(slow.Elapsed(), milliseconds(500));
}

TEST(DiscoveryTrouble, ARouterThatNamesManyNetworksIsAskedForAFewOnly) {
    ScriptedLink link;
    test::Octets npdu = Hex("01 80 01");
    for (int network = 1; network <= 600; ++network) {
        npdu.push_back(static_cast<char>(network >> 8));
        npdu.push_back(static_cast<char>(network & 0xFF));
    }
    link.Then({{bvlc::Broadcast(npdu), milliseconds(5), Router}});
    DiscoverySettings settings = Settings();
    settings.mostNetworks = 100;
    DiscoveryResult const result = Discovery(link, settings).Run();
    EXPECT_TRUE(result.hasReachedLimit);
    EXPECT_EQ(result.routers.at(0).networks.size(), 100u);
    EXPECT_EQ(link.sent.size(), 4u + 100u);
    EXPECT_EQ(link.Elapsed(), milliseconds(1000 + 100 * 50 + 3000));
}

TEST(DiscoveryTrouble, RandomTrafficEndsInTime) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        NoisyLink link(seed);
        auto const way = static_cast<DiscoverySettings::Way>(seed % 3);
        DiscoverySettings settings = Settings(way);
        settings.longest = std::chrono::seconds(30);
        DiscoveryResult const result = Discovery(link, settings).Run();
        EXPECT_LE(link.Elapsed(), settings.longest + 3 * settings.registrationTimeout) << seed;
        for (FoundDevice const& device : result.devices) {
            EXPECT_LE(device.Instance(), ObjectId::LastInstance);
            EXPECT_GT(device.answers, 0u);
        }
    }
}
