#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "Client.h"
#include "ReadRequests.h"
#include "ScriptedLink.h"

using namespace standard;
using std::chrono::milliseconds;
using test::Reply;
using test::ScriptedLink;

namespace {

constexpr PropertyReference Location{{8, 7}, 58, {}};
Peer const Device{test::DeviceEndpoint, std::nullopt};

// Octets of an answer for Location, cut into segments of 6 octets.
test::Octets const& Content() {
    static test::Octets const content =
        test::Hex("0C 02 00 00 07 19 3A 3E 75 10 00 41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 3F");
    return content;
}

constexpr std::size_t Length = 6;

test::Octets Segment(std::size_t number, int window = 3) {
    std::size_t const from = number * Length;
    std::size_t const to = std::min(from + Length, Content().size());
    test::Octets apdu{static_cast<char>(to < Content().size() ? 0x3C : 0x38), 1, static_cast<char>(number),
                      static_cast<char>(window), 12};
    apdu.insert(apdu.end(), Content().begin() + static_cast<std::ptrdiff_t>(from),
                Content().begin() + static_cast<std::ptrdiff_t>(to));
    return apdu;
}

ScriptedLink::Reply Sent(std::size_t number, int after = 10) {
    return {test::Local(Segment(number)), milliseconds(after)};
}

// The device of the tests below. It answers every request with segments, repeats a window that is not
// acknowledged within a second three times, and loses datagrams.
class SegmentingLink : public ScriptedLink {
public:
    std::function<bool()> loses = [] { return false; };

    std::optional<Datagram> Receive(Time deadline) override {
        while (repeats < 3) {
            Time const until = std::min(deadline, Now() + milliseconds(1000));
            auto datagram = ScriptedLink::Receive(until);
            if (datagram || until == deadline) {
                return datagram;
            }
            ++repeats;
            SendWindow();
        }
        return ScriptedLink::Receive(deadline);
    }

private:
    void OnSend(Datagram const& datagram) override {
        if (loses()) {
            return;
        }
        repeats = 0;
        unsigned const type = OctetValue(datagram.octets[6]) >> 4;
        if (type == 0) {
            first = 0;
            window = 1;
        } else if (type == 4) {
            first = OctetValue(datagram.octets[8]) + 1u;
            window = OctetValue(datagram.octets[9]);
        }
        SendWindow();
    }

    void SendWindow() {
        for (std::size_t i = first; i < first + window && i * Length < Content().size(); ++i) {
            if (!loses()) {
                Deliver(Sent(i, 10 + static_cast<int>(i)));
            }
        }
    }

    std::size_t first = 0;
    std::size_t window = 0;  // before the first request
    int repeats = 0;
};

}  // namespace

TEST(SegmentedAnswer, IsAcknowledgedByWindowAndPutTogether) {
    ScriptedLink link;
    link.Then({Sent(0)}).Then({Sent(1), Sent(2, 11), Sent(3, 12)}).Then({Sent(4)});
    Client client(link, {});
    ReadResult const result = client.Read(Device, Location);
    ASSERT_FALSE(result.failure) << FailureText(*result.failure);
    EXPECT_EQ(result.values.at(0).text, "ABCDEFGHIJKLMNO");
    EXPECT_EQ(link.SentApdus(), (std::vector<std::string>{"02 75 01 0C 0C 02 00 00 07 19 3A", "40 01 00 03",
                                                          "40 01 03 03", "40 01 04 03"}));
    EXPECT_EQ(test::ToHex(link.sent[1].octets).substr(0, 17), "81 0A 00 0A 01 00");
    EXPECT_EQ(client.LastExchange().segments, 5u);
    EXPECT_EQ(client.LastExchange().duration, milliseconds(32));
}

TEST(SegmentedAnswer, ALostSegmentIsRequestedAgain) {
    ScriptedLink link;
    link.Then({Sent(0)}).Then({Sent(1), Sent(3)}).Then({Sent(2), Sent(3), Sent(4)});
    Client client(link, {});
    EXPECT_FALSE(client.Read(Device, Location).failure);
    EXPECT_EQ(link.SentApdus().at(2), "42 01 01 03");
    EXPECT_EQ(client.LastExchange().lostSegments, 1u);
    EXPECT_EQ(client.LastExchange().attempts, 1u);
}

TEST(SegmentedAnswer, FromARouterGoesBackThroughIt) {
    ScriptedLink link;
    Peer const remote{test::DeviceEndpoint, NetworkAddress{5, {'\x0B'}}};
    test::Octets datagram = test::Hex("81 0A 00 16 01 08 00 05 01 0B");
    datagram = test::operator+(datagram, Segment(0));
    datagram[3] = static_cast<char>(datagram.size());
    link.Then({{datagram}});
    Client client(link, {});
    EXPECT_EQ(client.Read(remote, Location).failure->kind, Failure::Kind::Incomplete);
    EXPECT_EQ(test::ToHex(link.sent.at(1).octets), "81 0A 00 0F 01 20 00 05 01 0B FF 40 01 00 03");
}

TEST(SegmentedAnswer, OfAnyStationOfANetworkIsAcknowledgedToTheOneThatSendsIt) {
    ScriptedLink link;
    Peer const network{test::DeviceEndpoint, NetworkAddress{5, {}}};
    auto const behind = [](char const* header, unsigned number) {
        test::Octets datagram = test::operator+(test::Hex(header), Segment(number));
        datagram[3] = static_cast<char>(datagram.size());
        return ScriptedLink::Reply{datagram};
    };
    link.Then({behind("81 0A 00 00 01 08 00 05 01 0B", 0), behind("81 0A 00 00 01 08 00 05 01 0C", 1)});
    Client client(link, {});
    EXPECT_EQ(client.Read(network, Location).failure->kind, Failure::Kind::Incomplete);
    EXPECT_EQ(test::ToHex(link.sent.at(1).octets), "81 0A 00 0F 01 20 00 05 01 0B FF 40 01 00 03");
    EXPECT_EQ(client.LastExchange().answeredBy, (Peer{test::DeviceEndpoint, NetworkAddress{5, {'\x0B'}}}));
    EXPECT_EQ(client.LastExchange().others.at(0), (Peer{test::DeviceEndpoint, NetworkAddress{5, {'\x0C'}}}));
    EXPECT_EQ(client.LastExchange().segments, 1u);
}

TEST(SegmentedAnswer, ThatStopsIsAFailureAfterFourTimeouts) {
    ScriptedLink link;
    link.Then({Sent(0)}).Then({Sent(1)});
    ClientSettings settings;
    settings.segmentTimeout = milliseconds(500);
    Client client(link, settings);
    EXPECT_EQ(FailureText(client.Read(Device, Location).failure.value()),
              "incomplete answer (the segments stopped after 2)");
    EXPECT_EQ(link.Elapsed(), milliseconds(2020));
    EXPECT_EQ(link.sent.size(), 2u);
}

TEST(SegmentedAnswer, DoesNotBeginInTheMiddle) {
    ScriptedLink link;
    link.Then({Sent(2), Sent(3)}).Then({Sent(0)}).Then({Sent(1), Sent(2), Sent(3)}).Then({Sent(4)});
    Client client(link, {});
    EXPECT_FALSE(client.Read(Device, Location).failure);
    EXPECT_EQ(client.LastExchange().attempts, 2u);
    EXPECT_EQ(client.LastExchange().foreignCount, 2u);
}

TEST(SegmentedAnswer, CanEndWithAnAbort) {
    ScriptedLink link;
    link.Then({Sent(0)}).Then({Reply("71 01 0A")});
    Client client(link, {});
    EXPECT_EQ(FailureText(client.Read(Device, Location).failure.value()), "abort: tsm-timeout");
}

TEST(SegmentedAnswer, ThatIsTooLongIsAborted) {
    ScriptedLink link;
    link.Then({Sent(0)}).Then({Sent(1), Sent(2), Sent(3)});
    ClientSettings settings;
    settings.longestAnswer = 17;
    Client client(link, settings);
    EXPECT_EQ(FailureText(client.Read(Device, Location).failure.value()),
              "malformed answer (longer than 17 octets)");
    EXPECT_EQ(link.SentApdus().back(), "70 01 01");
}

TEST(SegmentedAnswer, ArrivesOverANetworkThatLosesAThird) {
    unsigned arrived = 0;
    for (unsigned seed = 0; seed < 200; ++seed) {
        SegmentingLink link;
        std::mt19937 random(seed);
        link.loses = [&] { return random() % 3 == 0; };
        ClientSettings settings;
        settings.retries = 5;
        Client client(link, settings);
        ReadResult const result = client.Read(Device, Location);
        EXPECT_LE(link.Elapsed(), settings.longestExchange);
        if (!result.failure) {
            ++arrived;
            ASSERT_EQ(result.values.at(0).text, "ABCDEFGHIJKLMNO") << seed;
        }
    }
    EXPECT_GT(arrived, 150u);
}

TEST(SegmentedAnswer, WithoutLossArrives) {
    SegmentingLink link;
    Client client(link, {});
    EXPECT_FALSE(client.Read(Device, Location).failure);
    EXPECT_EQ(client.LastExchange().repeatedSegments + client.LastExchange().lostSegments, 0u);
}
