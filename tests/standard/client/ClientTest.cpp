#include "Client.h"

#include <gtest/gtest.h>

#include "ScriptedLink.h"

using namespace standard;
using std::chrono::milliseconds;
using test::Hex;
using test::Reply;
using test::ScriptedLink;

namespace {

constexpr PropertyReference PresentValue{{0, 5}, 85, {}};
char const* const Answer72 = "30 01 0C 0C 00 00 00 05 19 55 3E 44 42 90 00 00 3F";
char const* const ReadRequest = "02 75 01 0C 0C 00 00 00 05 19 55";

struct Rig {
    ScriptedLink link;
    ClientSettings settings;
    Peer device{test::DeviceEndpoint, std::nullopt};

    Client Made() { return Client(link, settings); }
};

}  // namespace

TEST(Client, ReadsAProperty) {
    Rig rig;
    rig.link.Then({Reply(Answer72)});
    Client client = rig.Made();
    ReadResult const result = client.Read(rig.device, PresentValue);
    ASSERT_FALSE(result.failure);
    EXPECT_EQ(result.values.at(0).real, 72.0);
    ASSERT_EQ(rig.link.sent.size(), 1u);
    EXPECT_EQ(test::ToHex(rig.link.sent[0].octets), "81 0A 00 11 01 04 02 75 01 0C 0C 00 00 00 05 19 55");
    EXPECT_EQ(rig.link.sent[0].peer, test::DeviceEndpoint);
    EXPECT_EQ(client.LastExchange().attempts, 1u);
    EXPECT_EQ(client.LastExchange().answeredBy, rig.device);
    EXPECT_EQ(client.LastExchange().duration, milliseconds(10));
}

TEST(Client, ReadsAnElementOfAnArray) {
    Rig rig;
    rig.link.Then({Reply("30 01 0C 0C 02 00 00 07 19 4C 29 00 3E 21 03 3F")});
    ReadResult const result = rig.Made().Read(rig.device, {{8, 7}, 76, 0});
    EXPECT_EQ(result.values.at(0).number, 3u);
    EXPECT_EQ(rig.link.SentApdus().at(0), "02 75 01 0C 0C 02 00 00 07 19 4C 29 00");
}

TEST(Client, ErrorsRejectsAndAbortsAreFailures) {
    struct Row {
        char const* apdu;
        char const* text;
    };
    for (Row const& row :
         {Row{"50 01 0C 91 01 91 1F", "object: unknown-object"},
          Row{"60 01 09", "reject: unrecognized-service"},
          Row{"71 01 04", "abort: segmentation-not-supported"},
          Row{"50 01 0C", "malformed answer (an error without class and code)"},
          Row{"20 01 0C", "malformed answer (an ack without values)"},
          Row{"30 01 0C", "malformed answer (not the parameters of an answer to ReadProperty)"},
          Row{"30 01 0C 0C 00 00 00 06 19 55 3E 44 42 90 00 00 3F",
              "malformed answer (it is for another property)"}}) {
        Rig rig;
        rig.link.Then({Reply(row.apdu)});
        ReadResult const result = rig.Made().Read(rig.device, PresentValue);
        ASSERT_TRUE(result.failure) << row.apdu;
        EXPECT_EQ(FailureText(*result.failure), row.text);
        EXPECT_TRUE(result.values.empty());
        EXPECT_EQ(rig.link.sent.size(), 1u);
    }
}

TEST(Client, AnswerThatIsCutOffIsMalformedOrIgnored) {
    test::Octets answer = Hex(Answer72);
    while (!answer.empty()) {
        answer.pop_back();
        Rig rig;
        rig.settings.retries = 0;
        rig.link.Then({{test::Local(answer)}});
        ReadResult const result = rig.Made().Read(rig.device, PresentValue);
        ASSERT_TRUE(result.failure) << test::ToHex(answer);
        EXPECT_EQ(result.failure->kind, answer.size() < 3 ? Failure::Kind::Silent : Failure::Kind::Malformed);
    }
}

TEST(Client, TheWildcardInstanceIsAnsweredWithTheOwnOne) {
    Rig rig;
    rig.link.Then({Reply("30 01 0C 0C 02 00 00 07 19 4B 3E C4 02 00 00 07 3F")});
    ReadResult const result = rig.Made().Read(rig.device, {{8, ObjectId::LastInstance}, 75, {}});
    ASSERT_FALSE(result.failure);
    EXPECT_EQ(result.values.at(0).Object(), (ObjectId{8, 7}));
    EXPECT_EQ(result.reference.object.instance, ObjectId::LastInstance);
}

TEST(Client, RepeatsTheRequestAndEnds) {
    Rig rig;
    rig.settings.timeout = milliseconds(500);
    rig.settings.retries = 2;
    Client client = rig.Made();
    ReadResult const result = client.Read(rig.device, PresentValue);
    EXPECT_EQ(FailureText(result.failure.value()), "no answer");
    EXPECT_EQ(rig.link.SentApdus(), std::vector<std::string>(3, ReadRequest));
    EXPECT_EQ(rig.link.Elapsed(), milliseconds(1500));
    EXPECT_EQ(client.LastExchange().attempts, 3u);
    EXPECT_EQ(client.LastExchange().duration, milliseconds(1500));
    EXPECT_FALSE(client.LastExchange().answeredBy);
}

TEST(Client, AnAnswerAfterARetryCounts) {
    Rig rig;
    rig.settings.timeout = milliseconds(500);
    rig.link.Then({Reply(Answer72, 700)});
    Client client = rig.Made();
    EXPECT_FALSE(client.Read(rig.device, PresentValue).failure);
    EXPECT_EQ(client.LastExchange().attempts, 2u);
    EXPECT_EQ(client.LastExchange().duration, milliseconds(700));
    EXPECT_EQ(client.LastExchange().sinceSent, milliseconds(200));
}

TEST(Client, ALateAnswerIsDroppedAndReported) {
    Rig rig;
    rig.settings.timeout = milliseconds(500);
    rig.settings.retries = 0;
    rig.link.Then({Reply(Answer72, 1200)})
        .Then({})
        .Then({Reply("30 03 0C 0C 00 00 00 05 19 55 3E 44 42 92 00 00 3F", 400)});
    Client client = rig.Made();
    EXPECT_TRUE(client.Read(rig.device, PresentValue).failure);
    EXPECT_TRUE(client.Read(rig.device, {{0, 5}, 28, {}}).failure);
    EXPECT_EQ(client.LastExchange().lateCount, 0u);
    EXPECT_EQ(client.Read(rig.device, PresentValue).values.at(0).real, 73.0);
    ASSERT_EQ(client.LastExchange().lateCount, 1u);
    EXPECT_EQ(client.LastExchange().late[0].after, milliseconds(1200));
    EXPECT_EQ(client.LastExchange().late[0].reference, PresentValue);
    EXPECT_EQ(client.RequestCount(), 3u);
}

TEST(Client, ARepeatedAnswerIsNotALateOne) {
    Rig rig;
    rig.link.Then({Reply(Answer72), Reply(Answer72, 20)})
        .Then({Reply("30 02 0C 0C 00 00 00 05 19 55 3E 44 42 92 00 00 3F", 30)});
    Client client = rig.Made();
    client.Read(rig.device, PresentValue);
    EXPECT_EQ(client.Read(rig.device, PresentValue).values.at(0).real, 73.0);
    EXPECT_EQ(client.LastExchange().lateCount, 0u);
    EXPECT_EQ(client.LastExchange().foreignCount, 1u);
}

TEST(Client, OtherStationsAreNotHeard) {
    Rig rig;
    test::Octets const fromBehind =
        Hex("81 0A 00 1A 01 08 00 05 01 0B 30 01 0C 0C 00 00 00 05 19 55 3E 44 42 92 00 00");
    rig.link.Then({Reply(Answer72, 10, test::StrangerEndpoint),
                   Reply(Answer72, 15, test::StrangerEndpoint),
                   {fromBehind, milliseconds(20)},
                   Reply("30 09 0C 0C 00 00 00 05 19 55 3E 44 42 92 00 00 3F", 25),
                   Reply("30 01 0E 0C 00 00 00 05 1E 1F", 30),
                   Reply(Answer72, 40)});
    Client client = rig.Made();
    EXPECT_EQ(client.Read(rig.device, PresentValue).values.at(0).real, 72.0);
    Exchange const& exchange = client.LastExchange();
    EXPECT_EQ(exchange.otherCount, 3u);
    ASSERT_EQ(exchange.others.size(), 2u);
    EXPECT_EQ(exchange.others[0], (Peer{test::StrangerEndpoint, std::nullopt}));
    EXPECT_EQ(exchange.others[1], (Peer{test::DeviceEndpoint, NetworkAddress{5, {'\x0B'}}}));
    EXPECT_EQ(exchange.foreignCount, 2u);
    EXPECT_EQ(exchange.attempts, 1u);
}

TEST(Client, DatagramsThatAreNotAnswersAreCounted) {
    Rig rig;
    rig.link.Then({{Hex("")},
                   {Hex("81")},
                   {Hex("81 0A 00 05 01 00")},
                   {Hex("82 0A 00 06 01 00")},
                   {Hex("81 0B 00 17 01 00 30 01 0C 0C 00 00 00 05 19 55 3E 44 42 90 00 00 3F")},
                   {Hex("81 0A 00 08 02 00 10 08")},
                   Reply("10 08"),
                   Reply("00 75 01 0C"),
                   Reply("40 01 00 01"),
                   {Hex("81 0A 00 0B 01 20 00 05 01 01 FF")},
                   Reply(Answer72, 20)});
    Client client = rig.Made();
    EXPECT_FALSE(client.Read(rig.device, PresentValue).failure);
    EXPECT_EQ(client.LastExchange().foreignCount, 10u);
}

TEST(Client, ADeviceBehindARouterHasItsAddress) {
    Rig rig;
    rig.device.remote = NetworkAddress{5, {'\x0B'}};
    test::Octets const answer =
        Hex("81 0A 00 1B 01 08 00 05 01 0B 30 01 0C 0C 00 00 00 05 19 55 3E 44 42 90 00 00 3F");
    rig.link.Then({{answer}});
    Client client = rig.Made();
    EXPECT_EQ(client.Read(rig.device, PresentValue).values.at(0).real, 72.0);
    EXPECT_EQ(test::ToHex(rig.link.sent.at(0).octets),
              "81 0A 00 16 01 24 00 05 01 0B FF 02 75 01 0C 0C 00 00 00 05 19 55");
    EXPECT_EQ(client.LastExchange().answeredBy, rig.device);
}

TEST(Client, AnyStationOfANetworkAnswersARequestToAllOfThem) {
    Rig rig;
    rig.device.remote = NetworkAddress{5, {}};
    char const* const value = " 30 01 0C 0C 00 00 00 05 19 55 3E 44 42 90 00 00 3F";
    auto const behind = [&](std::string const& header) { return ScriptedLink::Reply{Hex(header + value)}; };
    rig.link.Then(
        {behind("81 0A 00 1B 01 08 00 06 01 0B"), Reply(Answer72), behind("81 0A 00 1B 01 08 00 05 01 0B")});
    Client client = rig.Made();
    EXPECT_EQ(client.Read(rig.device, PresentValue).values.at(0).real, 72.0);
    EXPECT_EQ(test::ToHex(rig.link.sent.at(0).octets),
              "81 0A 00 15 01 24 00 05 00 FF 02 75 01 0C 0C 00 00 00 05 19 55");
    EXPECT_EQ(client.LastExchange().answeredBy, (Peer{test::DeviceEndpoint, NetworkAddress{5, {'\x0B'}}}));
    EXPECT_EQ(client.LastExchange().otherCount, 2u);
}

TEST(Client, ALateAnswerOfAnyStationOfANetworkIsReported) {
    Rig rig;
    rig.settings.timeout = milliseconds(500);
    rig.settings.retries = 0;
    rig.device.remote = NetworkAddress{5, {}};
    rig.link.Then({{Hex("81 0A 00 1B 01 08 00 05 01 0B 30 01 0C 0C 00 00 00 05 19 55 3E 44 42 90 00 00 3F"),
                    milliseconds(700)}});
    Client client = rig.Made();
    EXPECT_TRUE(client.Read(rig.device, PresentValue).failure);
    EXPECT_TRUE(client.Read(rig.device, PresentValue).failure);
    ASSERT_EQ(client.LastExchange().lateCount, 1u);
    EXPECT_EQ(client.LastExchange().late[0].after, milliseconds(700));
}

TEST(Client, SilenceNamesDatagramsThatAreNoAnswers) {
    Rig rig;
    rig.settings.retries = 0;
    rig.link.Then({{Hex("DE AD")}, {Hex("BE EF")}}).Then({}).Then({{Hex("DE AD")}});
    Client client = rig.Made();
    auto const why = [&] { return FailureText(client.Read(rig.device, PresentValue).failure.value()); };
    EXPECT_EQ(why(), "no answer (2 datagrams came that are not an answer)");
    EXPECT_EQ(why(), "no answer");
    EXPECT_EQ(why(), "no answer (a datagram came that is not an answer)");
}

TEST(Client, TheRouterDoesNotAnswerInPlaceOfTheDevice) {
    Rig rig;
    rig.settings.retries = 0;
    rig.device.remote = NetworkAddress{5, {'\x0B'}};
    rig.link.Then(
        {Reply(Answer72), {Hex("81 0A 00 0A 01 80 03 01 00 05")}, {Hex("81 0A 00 0A 01 80 03 02 00 06")}});
    Client client = rig.Made();
    EXPECT_EQ(FailureText(client.Read(rig.device, PresentValue).failure.value()),
              "no answer (the router does not reach network 5, reason 1)");
    EXPECT_EQ(client.LastExchange().others.at(0), (Peer{test::DeviceEndpoint, std::nullopt}));
    EXPECT_EQ(client.LastExchange().routerReject, 1u);
}

TEST(Client, StopsWhenTheLinkIsStopped) {
    Rig rig;
    rig.link.stopAfter = 2;
    Client client = rig.Made();
    EXPECT_EQ(FailureText(client.Read(rig.device, PresentValue).failure.value()), "stopped");
    auto const results = client.ReadMultiple(rig.device, {PresentValue, PresentValue});
    EXPECT_EQ(results.at(1).failure->kind, Failure::Kind::Stopped);
    EXPECT_EQ(rig.link.sent.size(), 2u);
}

TEST(Client, InvokeIdsWrap) {
    Rig rig;
    for (unsigned i = 1; i <= 300; ++i) {
        test::Octets answer = Hex(Answer72);
        answer[1] = static_cast<char>(i);
        rig.link.Then({{test::Local(answer)}});
    }
    Client client = rig.Made();
    for (int i = 0; i < 300; ++i) {
        ASSERT_FALSE(client.Read(rig.device, PresentValue).failure) << i;
    }
    EXPECT_EQ(rig.link.SentApdus().back().substr(0, 11), "02 75 2C 0C");
}

TEST(Client, NamesTheStationThatAnswersInstead) {
    Rig rig;
    rig.settings.retries = 0;
    test::Octets const fromBehind = Hex("81 0A 00 13 01 08 00 05 01 0B 30 01 0C 0C 00 00 00 05 19");
    rig.link.Then({{fromBehind}, Reply(Answer72, 20, test::StrangerEndpoint)});
    Client client = rig.Made();
    EXPECT_EQ(FailureText(client.Read(rig.device, PresentValue).failure.value()),
              "no answer (another station answers: station 0b of network 5 behind 10.0.0.1:47808)");
    EXPECT_EQ(client.LastExchange().others.at(1).Text(), "10.0.0.2:47808");
}
