#include "Discovery.h"

#include <gtest/gtest.h>

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

// The datagrams of a question.
char const* const AskRouters = "81 0B 00 07 01 80 00";
char const* const AskAllNetworks = "81 0B 00 0C 01 20 FF FF 00 FF 10 08";
char const* const AskLocal = "81 0B 00 08 01 00 10 08";
char const* const AskNetwork5 = "81 0A 00 0C 01 20 00 05 00 FF 10 08";
char const* const IAm7ByBroadcast = "81 0B 00 18 01 20 FF FF 00 FF 10 00 C4 02 00 00 07 22 05 C4 91 00 21 0F";

struct Rig {
    ScriptedLink link;
    DiscoverySettings settings;
    std::vector<std::uint32_t> seen;

    Rig() { settings.target = Everyone; }
    DiscoveryResult Run() {
        Discovery discovery(link, settings);
        discovery.OnDevice([this](FoundDevice const& device) { seen.push_back(device.Instance()); });
        return discovery.Run();
    }
    std::vector<std::string> Sent() const {
        std::vector<std::string> texts;
        for (Datagram const& datagram : link.sent) {
            texts.push_back(ToHex(datagram.octets));
        }
        return texts;
    }
};

using Texts = std::vector<std::string>;

}  // namespace

TEST(Discovery, AsksAllNetworksAndThenTheLocalOne) {
    Rig rig;
    rig.link.Then({}).Then({Whole(IAm7, 30)});
    DiscoveryResult const result = rig.Run();
    EXPECT_EQ(rig.Sent(), (Texts{AskRouters, AskAllNetworks, AskRouters, AskLocal}));
    for (Datagram const& datagram : rig.link.sent) {
        EXPECT_EQ(datagram.peer, Everyone);
    }
    ASSERT_EQ(result.devices.size(), 1u);
    FoundDevice const& device = result.devices[0];
    EXPECT_EQ(device.iAm, (IAm{{8, 7}, 1476, 0, 15}));
    EXPECT_EQ(device.peer, (Peer{test::DeviceEndpoint, std::nullopt}));
    EXPECT_EQ(device.after, milliseconds(30));
    EXPECT_EQ(device.answers, 1u);
    EXPECT_EQ(device.questions, 2u);
    EXPECT_FALSE(device.usesBroadcast);
    EXPECT_EQ(rig.seen, std::vector<std::uint32_t>{7});
    EXPECT_EQ(rig.link.Elapsed(), milliseconds(4000));
    EXPECT_TRUE(result.failure.empty());
    EXPECT_FALSE(result.isStopped || result.hasReachedLimit);
}

TEST(Discovery, WithoutRoutersOnlyTheLocalNetworkIsAsked) {
    Rig rig;
    rig.settings.asksRouters = false;
    rig.settings.rounds = 1;
    rig.settings.range = InstanceRange{1, 99};
    rig.link.Then({Whole(IAmRouterTo5, 5, Router)});
    EXPECT_TRUE(rig.Run().routers.empty());
    EXPECT_EQ(rig.Sent(), Texts{"81 0B 00 0C 01 00 10 08 09 01 19 63"});
    EXPECT_EQ(rig.link.Elapsed(), milliseconds(3000));
}

TEST(Discovery, AsksInTheNetworkOfARouterThroughIt) {
    Rig rig;
    rig.link.Then({Whole(IAmRouterTo5, 5, Router)})
        .Then({})
        .Then({})
        .Then({})
        .Then({Whole(IAm9OfNetwork5, 2000, Router)});
    DiscoveryResult const result = rig.Run();
    EXPECT_EQ(rig.Sent(), (Texts{AskRouters, AskAllNetworks, AskRouters, AskLocal, AskNetwork5}));
    EXPECT_EQ(rig.link.sent.back().peer, Router);
    ASSERT_EQ(result.routers.size(), 1u);
    EXPECT_EQ(result.routers[0].endpoint, Router);
    EXPECT_EQ(result.routers[0].networks, std::vector<std::uint16_t>{5});
    ASSERT_EQ(result.devices.size(), 1u);
    EXPECT_EQ(result.devices[0].iAm, (IAm{{8, 9}, 206, 3, 15}));
    EXPECT_EQ(result.devices[0].peer, (Peer{Router, NetworkAddress{5, {0x0B}}}));
    EXPECT_TRUE(result.devices[0].usesBroadcast);
    EXPECT_EQ(result.devices[0].questions, 2u);
    EXPECT_EQ(result.devices[0].after, milliseconds(3050));
    EXPECT_EQ(rig.link.Elapsed(), milliseconds(4050));
}

TEST(Discovery, NetworksAreAskedOneAfterTheOther) {
    Rig rig;
    rig.settings.rounds = 1;
    rig.link.Then({Whole("81 0B 00 0F 01 80 01 00 05 00 06 00 00 FF FF 00 05", 5, Router)});
    DiscoveryResult const wrongLength = rig.Run();
    EXPECT_TRUE(wrongLength.routers.empty());
    Rig right;
    right.settings.rounds = 1;
    right.link.Then({Whole("81 0B 00 11 01 80 01 00 06 00 05 00 00 FF FF 00 05", 5, Router)});
    DiscoveryResult const result = right.Run();
    EXPECT_EQ(right.Sent(),
              (Texts{AskRouters, AskAllNetworks, "81 0A 00 0C 01 20 00 06 00 FF 10 08", AskNetwork5}));
    EXPECT_EQ(result.routers.at(0).networks, (std::vector<std::uint16_t>{5, 6}));
    EXPECT_EQ(right.link.Elapsed(), milliseconds(3105));
}

TEST(Discovery, OneAddressIsAskedByUnicast) {
    Rig rig;
    rig.settings.way = DiscoverySettings::Way::Unicast;
    rig.settings.target = Router;
    rig.settings.rounds = 1;
    rig.link.Then({Whole(IAmRouterTo5, 5, Router)}).Then({Whole(IAm7ByBroadcast, 8, Router)});
    DiscoveryResult const result = rig.Run();
    EXPECT_EQ(rig.Sent(), (Texts{"81 0A 00 07 01 80 00", "81 0A 00 08 01 00 10 08", AskNetwork5}));
    ASSERT_EQ(result.devices.size(), 1u);
    EXPECT_EQ(result.devices[0].peer, (Peer{Router, std::nullopt}));
    EXPECT_TRUE(result.devices[0].usesBroadcast);
    EXPECT_EQ(result.devices[0].questions, 1u);
}

TEST(Discovery, NamedNetworksAreAskedWithoutARouter) {
    Rig rig;
    rig.settings.asksRouters = false;
    rig.settings.rounds = 1;
    rig.settings.networks = {5};
    rig.link.Then({}).Then({Whole(IAm9OfNetwork5, 10, Router)});
    DiscoveryResult const result = rig.Run();
    EXPECT_EQ(rig.Sent(), (Texts{AskLocal, "81 0B 00 0C 01 20 00 05 00 FF 10 08"}));
    EXPECT_EQ(rig.link.sent.back().peer, Everyone);
    EXPECT_EQ(result.devices.at(0).questions, 1u);
}

TEST(Discovery, AnswersComeBackByUnicastAndBroadcastAndThroughABbmd) {
    Rig rig;
    rig.link.Then(
        {Whole(IAm7), Whole(IAm7ByBroadcast, 20),
         Whole("81 04 00 1A C0 A8 01 02 BA C0 01 00 10 00 C4 02 00 00 08 22 05 C4 91 00 21 0F", 30)});
    DiscoveryResult const result = rig.Run();
    ASSERT_EQ(result.devices.size(), 2u);
    EXPECT_EQ(result.devices[0].answers, 2u);
    EXPECT_TRUE(result.devices[0].usesBroadcast);
    EXPECT_FALSE(result.devices[0].isContradictory);
    EXPECT_EQ(result.devices[1].peer, (Peer{{0xC0A80102, 47808}, std::nullopt}));
    EXPECT_EQ(rig.seen, (std::vector<std::uint32_t>{7, 8}));
}

TEST(Discovery, MalformedAnswersAndOtherTrafficAreNoDevices) {
    Rig rig;
    rig.link.Then(
        {Whole("81 0A 00 08 01 00 10 00"), Whole("81 0A 00 13 01 00 10 00 C4 02 00 00 07 22 05 C4 91 00 21"),
         Whole("81 0B 00 08 01 00 10 08"), Whole("6E 6F 69 73 65"), Whole("81 0A 00 09 01 00 50 01 0C"),
         Whole("81 0A 00 18 01 20 00 09 00 FF 10 00 C4 02 00 00 07 22 05 C4 91 00 21 0F")});
    DiscoveryResult const result = rig.Run();
    EXPECT_TRUE(result.devices.empty());
    EXPECT_EQ(result.malformedCount, 2u);
    ASSERT_EQ(result.malformed.size(), 1u + 1u);
    EXPECT_EQ(result.malformed[0].peer, (Peer{test::DeviceEndpoint, std::nullopt}));
    EXPECT_EQ(ToHex(result.malformed[0].apdu), "10 00");
}

TEST(Discovery, ARouterReportsANetworkThatItDoesNotReach) {
    Rig rig;
    rig.link.Then({Whole(IAmRouterTo5, 5, Router)})
        .Then({})
        .Then({})
        .Then({})
        .Then({Whole("81 0A 00 0A 01 80 03 01 00 05", 10, Router)});
    DiscoveryResult const result = rig.Run();
    ASSERT_EQ(result.rejected.size(), 1u);
    EXPECT_EQ(result.rejected[0].router, Router);
    EXPECT_EQ(result.rejected[0].network, 5);
    EXPECT_EQ(result.rejected[0].reason, 1);
}

TEST(Discovery, InstancesThatWereNotAskedForAreCountedOnly) {
    Rig rig;
    rig.settings.range = InstanceRange{8, 10};
    rig.link.Then({Whole(IAm7), Whole(IAm9OfNetwork5)});
    DiscoveryResult const result = rig.Run();
    ASSERT_EQ(result.devices.size(), 1u);
    EXPECT_EQ(result.devices[0].Instance(), 9u);
    EXPECT_EQ(result.outsideCount, 1u);
}
