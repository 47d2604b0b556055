#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "Client.h"
#include "ScriptedLink.h"

// Devices that answer without end, or at random: every request ends within its bounds.

using namespace standard;
using std::chrono::milliseconds;
using test::ScriptedLink;

namespace {

using Answers = std::vector<test::Octets>;

Peer const Device{test::DeviceEndpoint, std::nullopt};
constexpr PropertyReference PresentValue{{0, 5}, 85, {}};

// Answers each datagram with what `answer` makes of its APDU.
class AnsweringLink : public ScriptedLink {
public:
    std::function<Answers(test::Octets const& apdu)> answer;
    milliseconds delay{10};

private:
    void OnSend(standard::Datagram const& datagram) override {
        for (test::Octets const& apdu : answer({datagram.octets.begin() + 6, datagram.octets.end()})) {
            Deliver({test::Local(apdu), delay});
        }
    }
};

// A datagram of a stranger at once after each one received, for ever.
class FloodingLink : public ScriptedLink {
public:
    explicit FloodingLink(milliseconds every) : interval(every) {}

    std::optional<standard::Datagram> Receive(Time deadline) override {
        Deliver({test::Local(test::Hex("30 63 0C 00")), interval, test::StrangerEndpoint});
        ++received;
        return ScriptedLink::Receive(deadline);
    }

    std::size_t received = 0;

private:
    milliseconds interval;
};

// A link that always has a datagram, also at the deadline.
class OverdueLink : public ScriptedLink {
public:
    std::optional<standard::Datagram> Receive(Time) override {
        Deliver({test::Local(test::Hex("30 63 0C 00")), milliseconds(7), test::StrangerEndpoint});
        return ScriptedLink::Receive(Time::max());
    }
};

test::Octets SegmentOf(unsigned number, std::size_t octets) {
    test::Octets apdu{0x3C, 1, static_cast<char>(number), 16, 12};
    apdu.resize(5 + octets);
    return apdu;
}

}  // namespace

TEST(EndlessAnswer, SegmentsForEverEndAtTheLongestAnswer) {
    AnsweringLink link;
    unsigned next = 0;
    link.answer = [&](auto const&) {
        Answers segments;
        for (int i = 0; i < 16; ++i) {
            segments.push_back(SegmentOf(next++, 1000));
        }
        return segments;
    };
    Client client(link, {});
    ReadResult const result = client.Read(Device, PresentValue);
    EXPECT_EQ(FailureText(result.failure.value()), "malformed answer (longer than 1048576 octets)");
    EXPECT_EQ(link.SentApdus().back(), "70 01 01");
}

TEST(EndlessAnswer, SlowSegmentsForEverEndAtTheLongestTime) {
    AnsweringLink link;
    unsigned next = 0;
    link.delay = milliseconds(2000);
    link.answer = [&](auto const&) { return Answers{SegmentOf(next++, 1)}; };
    Client client(link, {});
    EXPECT_EQ(client.Read(Device, PresentValue).failure->kind, Failure::Kind::Incomplete);
    EXPECT_LE(link.Elapsed(), milliseconds(60000));
}

TEST(EndlessAnswer, TheSameSegmentForEverEnds) {
    AnsweringLink link;
    link.delay = milliseconds(1);
    link.answer = [](auto const&) { return Answers{SegmentOf(0, 1), SegmentOf(0, 1)}; };
    ClientSettings settings;
    settings.longestExchange = milliseconds(5000);
    Client client(link, settings);
    EXPECT_EQ(client.Read(Device, PresentValue).failure->kind, Failure::Kind::Incomplete);
    EXPECT_LE(link.Elapsed(), milliseconds(13000));
}

TEST(EndlessAnswer, SegmentAcksForEverAreNoAnswer) {
    AnsweringLink link;
    link.answer = [](auto const&) { return Answers(1000, test::Hex("40 01 00 10")); };
    Client client(link, {});
    EXPECT_EQ(FailureText(client.Read(Device, PresentValue).failure.value()),
              "no answer (4000 datagrams came that are not an answer)");
    EXPECT_EQ(link.sent.size(), 4u);
    EXPECT_EQ(client.LastExchange().foreignCount, 4000u);
}

TEST(EndlessAnswer, AFloodEndsAtTheTimeOut) {
    FloodingLink link(milliseconds(1));
    Client client(link, {});
    EXPECT_EQ(FailureText(client.Read(Device, PresentValue).failure.value()),
              "no answer (12000 datagrams came that are not an answer)");
    EXPECT_LE(link.Elapsed(), milliseconds(12010));
    EXPECT_GT(link.received, 10000u);
}

TEST(EndlessAnswer, ADatagramAtTheDeadlineDoesNotExtendIt) {
    OverdueLink link;
    Client client(link, {});
    EXPECT_EQ(FailureText(client.Read(Device, PresentValue).failure.value()),
              "no answer (1716 datagrams came that are not an answer)");
    EXPECT_EQ(link.sent.size(), 4u);
    EXPECT_LE(link.Elapsed(), milliseconds(12000 + 4 * 7));
}

TEST(EndlessAnswer, AFloodWithoutPauseEndsAtTheNumberOfDatagrams) {
    FloodingLink link(milliseconds(0));
    Client client(link, {});
    EXPECT_EQ(FailureText(client.Read(Device, PresentValue).failure.value()),
              "no answer (65536 datagrams, but no complete answer among them)");
    EXPECT_EQ(link.received, 65536u);
}

TEST(EndlessAnswer, ListsOfADeviceWithEndlessSegmentsEnd) {
    AnsweringLink link;
    unsigned next = 0;
    link.delay = milliseconds(500);
    link.answer = [&](test::Octets const& apdu) {
        if ((OctetValue(apdu[0]) >> 4) == 0) {
            next = 0;
        }
        test::Octets segment = SegmentOf(next++, 1);
        segment[1] = apdu[OctetValue(apdu[0]) >> 4 == 0 ? 2 : 1];
        segment[4] = (OctetValue(apdu[0]) >> 4) == 0 ? apdu[3] : 12;
        return Answers{segment};
    };
    ClientSettings settings;
    Client client(link, settings);
    std::vector<PropertyReference> const references(1000, PresentValue);
    auto const results = client.ReadMultiple(Device, references);
    EXPECT_EQ(results.size(), 1000u);
    EXPECT_TRUE(results.back().failure);
    EXPECT_LE(link.Elapsed(), 3 * settings.longestExchange);
}

TEST(EndlessAnswer, RandomAnswersEnd) {
    std::mt19937 random(5);
    for (int round = 0; round < 2000; ++round) {
        AnsweringLink link;
        link.answer = [&](test::Octets const& apdu) {
            Answers answers(random() % 4);
            for (test::Octets& answer : answers) {
                answer.resize(random() % 20);
                for (char& octet : answer) {
                    octet = static_cast<char>(random());
                }
                // Most of them have a valid beginning, so that they are not dropped at once.
                if (answer.size() > 5 && random() % 8 != 0) {
                    answer[0] = static_cast<char>(0x20 + random() % 0x60);
                    answer[1] = apdu[(OctetValue(apdu[0]) >> 4) == 0 ? 2 : 1];
                    answer[2] = random() % 2 == 0 ? '\x0C' : '\x00';
                    answer[4] = '\x0C';
                }
            }
            return answers;
        };
        ClientSettings settings;
        Client client(link, settings);
        client.ReadMultiple(Device, {PresentValue, {{0, 6}, 85, {}}, {{8, 1}, 76, 0}});
        ASSERT_LE(link.Elapsed(), 9 * settings.longestExchange) << round;
    }
}
