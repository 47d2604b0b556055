#include "Pace.h"

#include <gtest/gtest.h>

#include "Client.h"
#include "ScriptedLink.h"

using namespace standard;
using std::chrono::microseconds;
using std::chrono::milliseconds;
using test::Reply;
using test::ScriptedLink;

namespace {

constexpr PropertyReference PresentValue{{0, 5}, 85, {}};
Peer const Local{test::DeviceEndpoint, std::nullopt};
Peer const Behind{test::DeviceEndpoint, NetworkAddress{5, {0x0B}}};
Peer const BehindToo{test::DeviceEndpoint, NetworkAddress{6, {0x0C}}};

// Notes when requests are sent, and answers those to the local device after a millisecond.
class TimedLink : public ScriptedLink {
public:
    std::vector<milliseconds> times;
    bool answers = true;

protected:
    void OnSend(Datagram const& datagram) override {
        times.push_back(Elapsed());
        if (answers) {
            test::Octets apdu = test::Hex("30 01 0C 0C 00 00 00 05 19 55 3E 44 42 90 00 00 3F");
            apdu[1] = datagram.octets[8];
            Deliver({test::Local(apdu), milliseconds(1), test::DeviceEndpoint});
        }
    }
};

using Times = std::vector<milliseconds>;

Times InMilliseconds(std::initializer_list<int> numbers) {
    Times times;
    for (int const number : numbers) {
        times.emplace_back(number);
    }
    return times;
}

}  // namespace

TEST(Pace, ARateIsASpacing) {
    EXPECT_EQ(SpacingOfRate(100), milliseconds(10));
    EXPECT_EQ(SpacingOfRate(10), milliseconds(100));
    EXPECT_EQ(SpacingOfRate(3), microseconds(333334));
    EXPECT_EQ(SpacingOfRate(0), microseconds(0));
}

TEST(Pace, RequestsToAStationAreSpaced) {
    TimedLink link;
    ClientSettings settings;
    settings.spacing = SpacingOfRate(100);
    Client client(link, settings);
    for (int i = 0; i < 4; ++i) {
        EXPECT_FALSE(client.Read(Local, PresentValue).failure);
        EXPECT_EQ(client.LastExchange().duration, milliseconds(1));
    }
    EXPECT_EQ(link.times, InMilliseconds({0, 10, 20, 30}));
}

TEST(Pace, WithoutASpacingRequestsFollowAtOnce) {
    TimedLink link;
    Client client(link, ClientSettings());
    client.Read(Local, PresentValue);
    client.Read(Local, PresentValue);
    EXPECT_EQ(link.times, InMilliseconds({0, 1}));
}

TEST(Pace, TheStationsBehindARouterShareItsTurn) {
    TimedLink link;
    link.answers = false;
    ClientSettings settings;
    settings.spacing = SpacingOfRate(100);
    settings.routedSpacing = SpacingOfRate(10);
    settings.timeout = milliseconds(30);
    settings.retries = 0;
    Client client(link, settings);
    client.Read(Behind, PresentValue);
    client.Read(BehindToo, PresentValue);
    client.Read({test::StrangerEndpoint, std::nullopt}, PresentValue);
    EXPECT_EQ(link.times, InMilliseconds({0, 100, 200}));
}

TEST(Pace, RetriesCount) {
    TimedLink link;
    link.answers = false;
    ClientSettings settings;
    settings.spacing = SpacingOfRate(10);
    settings.timeout = milliseconds(30);
    settings.retries = 2;
    Client client(link, settings);
    client.Read(Local, PresentValue);
    client.Read(Local, PresentValue);
    EXPECT_EQ(link.times, InMilliseconds({0, 100, 200, 300, 400, 500}));
}

TEST(Pace, AnAnswerAfterAShortTimeoutCountsUntilTheNextTurn) {
    ScriptedLink link;
    link.Then({Reply("30 01 0C 0C 00 00 00 05 19 55 3E 44 42 90 00 00 3F", 80)});
    ClientSettings settings;
    settings.spacing = SpacingOfRate(10);
    settings.timeout = milliseconds(30);
    Client client(link, settings);
    EXPECT_FALSE(client.Read(Local, PresentValue).failure);
    EXPECT_EQ(link.sent.size(), 1u);
}

TEST(Pace, ListsAndTheirPartsAreSpacedToo) {
    TimedLink link;
    ClientSettings settings;
    settings.spacing = SpacingOfRate(10);
    settings.retries = 0;
    link.Then({Reply("60 01 09")});
    Client client(link, settings);
    client.ReadMultiple(Local, {PresentValue, PresentValue, PresentValue});
    EXPECT_EQ(link.times, InMilliseconds({100, 200, 300}));
}

TEST(Pace, DatagramsThatNeverEndDoNotHurryIt) {
    class Flood : public TimedLink {
        std::optional<Datagram> Receive(Time deadline) override {
            Deliver({{'x'}, std::chrono::milliseconds(1), test::StrangerEndpoint});
            return ScriptedLink::Receive(deadline);
        }
    };
    Flood link;
    link.answers = false;
    ClientSettings settings;
    settings.spacing = SpacingOfRate(10);
    settings.timeout = milliseconds(30);
    settings.retries = 3;
    settings.mostDatagrams = 150;
    Client client(link, settings);
    client.Read(Local, PresentValue);
    EXPECT_EQ(link.times, InMilliseconds({0, 100}));
    EXPECT_EQ(link.Elapsed(), milliseconds(150));
}

TEST(Pace, AStopEndsTheWait) {
    TimedLink link;
    link.stopAfter = 1;
    ClientSettings settings;
    settings.spacing = std::chrono::hours(1);
    Client client(link, settings);
    client.Read(Local, PresentValue);
    EXPECT_EQ(client.Read(Local, PresentValue).failure.value().kind, Failure::Kind::Stopped);
    EXPECT_EQ(link.times.size(), 1u);
}

TEST(Pace, ForgetsStationsWhoseTurnHasCome) {
    Pace pace(milliseconds(10), milliseconds(10));
    Link::Time now{};
    for (std::uint32_t i = 0; i < 5000; ++i) {
        now += milliseconds(1);
        pace.NoteSent({{i, 1}, std::nullopt}, now);
    }
    EXPECT_EQ(pace.NextTurn({{4999, 1}, std::nullopt}), now + milliseconds(10));
    EXPECT_LT(pace.NextTurn({{1, 1}, std::nullopt}), now);
}
