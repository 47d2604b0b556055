#include "Relinquisher.h"

#include <gtest/gtest.h>

#include <random>

#include "CutOff.h"
#include "ScriptedLink.h"

using namespace standard;
using std::chrono::milliseconds;
using test::Reply;
using test::ScriptedLink;

namespace {

constexpr ObjectId Valve{1, 5};
Peer const Device{test::DeviceEndpoint, std::nullopt};

std::string Relinquished(char const* answer) {
    ScriptedLink link;
    link.Then({Reply(answer)});
    auto const failure = Relinquisher(link, ClientSettings()).Relinquish(Device, Valve, 8);
    EXPECT_EQ(link.sent.size(), 1u) << answer;
    return failure ? FailureText(*failure) : "done";
}

}  // namespace

TEST(Relinquisher, WritesANullAtThePriority) {
    ScriptedLink link;
    link.Then({Reply("20 81 0F")}).Then({Reply("20 82 0F")});
    Relinquisher relinquisher(link, ClientSettings());
    EXPECT_FALSE(relinquisher.Relinquish(Device, Valve, 8));
    EXPECT_EQ(relinquisher.LastExchange().duration, milliseconds(10));
    EXPECT_EQ(test::ToHex(link.sent[0].octets),
              "81 0A 00 16 01 04 00 05 81 0F 0C 00 40 00 05 19 55 3E 00 3F 49 08");
    EXPECT_FALSE(relinquisher.Relinquish(Device, {19, 4194302}, 16));
    EXPECT_EQ(link.SentApdus()[1], "00 05 82 0F 0C 04 FF FF FE 19 55 3E 00 3F 49 10");
}

TEST(Relinquisher, ReachesAStationBehindARouter) {
    ScriptedLink link;
    link.Then({test::Whole("81 0A 00 0D 01 08 00 05 01 0B 20 81 0F")});
    EXPECT_FALSE(Relinquisher(link, ClientSettings())
                     .Relinquish({test::DeviceEndpoint, NetworkAddress{5, {0x0B}}}, Valve, 1));
    EXPECT_EQ(test::ToHex(link.sent[0].octets),
              "81 0A 00 1B 01 24 00 05 01 0B FF 00 05 81 0F 0C 00 40 00 05 19 55 3E 00 3F 49 01");
}

TEST(Relinquisher, ReportsWhyTheDeviceDidNotDoIt) {
    EXPECT_EQ(Relinquished("20 81 0F"), "done");
    EXPECT_EQ(Relinquished("50 81 0F 91 02 91 28"), "property: write-access-denied");
    EXPECT_EQ(Relinquished("60 81 09"), "reject: unrecognized-service");
    EXPECT_EQ(Relinquished("71 81 04"), "abort: segmentation-not-supported");
    EXPECT_EQ(Relinquished("30 81 0F 00"), "malformed answer (an ack with values)");
    EXPECT_EQ(Relinquished("50 81 0F"), "malformed answer (an error without class and code)");
}

TEST(Relinquisher, RepeatsWhatHasNoAnswer) {
    ScriptedLink link;
    ClientSettings settings;
    settings.timeout = milliseconds(500);
    settings.retries = 1;
    link.Then({Reply("20 81 0C"), Reply("20 80 0F"), Reply("20 81 0F", 10, test::StrangerEndpoint)});
    Relinquisher relinquisher(link, settings);
    auto const failure = relinquisher.Relinquish(Device, Valve, 8);
    EXPECT_EQ(failure.value().kind, Failure::Kind::Silent);
    EXPECT_EQ(link.sent.size(), 2u);
    EXPECT_EQ(link.sent[0].octets, link.sent[1].octets);
    EXPECT_EQ(link.Elapsed(), milliseconds(1000));
}

TEST(Relinquisher, SendsNothingAtAPriorityThatDoesNotExist) {
    ScriptedLink link;
    Relinquisher relinquisher(link, ClientSettings());
    for (std::uint32_t const priority : {0u, 17u, 264u}) {
        auto const failure = relinquisher.Relinquish(Device, Valve, priority);
        EXPECT_EQ(failure.value().kind, Failure::Kind::Malformed);
    }
    EXPECT_TRUE(link.sent.empty());
}

TEST(Relinquisher, IsPaced) {
    ScriptedLink link;
    link.Then({Reply("20 81 0F")}).Then({Reply("20 82 0F")});
    ClientSettings settings;
    settings.spacing = milliseconds(100);
    Relinquisher relinquisher(link, settings);
    EXPECT_FALSE(relinquisher.Relinquish(Device, Valve, 8));
    EXPECT_FALSE(relinquisher.Relinquish(Device, Valve, 9));
    EXPECT_EQ(link.Elapsed(), milliseconds(110));
}

TEST(Relinquisher, OnlyACompleteAckIsASuccess) {
    std::mt19937 random(23);
    for (int i = 0; i < 3000; ++i) {
        test::Octets const apdu = test::RandomOctets(random, "20 81 0F", 5);
        ScriptedLink link;
        ClientSettings settings;
        settings.retries = 0;
        link.Then({{test::Local(apdu)}});
        bool const isDone = !Relinquisher(link, settings).Relinquish(Device, Valve, 8);
        bool const isAck =
            apdu.size() >= 3 && OctetValue(apdu[0]) >> 4 == 2 && OctetValue(apdu[1]) == 0x81 && apdu[2] == 15;
        EXPECT_EQ(isDone, isAck) << test::ToHex(apdu);
    }
}
