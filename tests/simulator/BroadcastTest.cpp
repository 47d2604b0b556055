// Servers that are found by broadcasts, on sockets of the loopback network.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "DeviceFile.h"
#include "Hex.h"
#include "RunningClock.h"
#include "Server.h"

using simulator::CommandLine;
using simulator::Endpoint;
using simulator::Server;

namespace {

constexpr std::uint32_t Loopback = 0x7F000001;
constexpr std::uint32_t LoopbackBroadcast = 0x7FFFFFFF;
constexpr std::uint32_t LimitedBroadcast = 0xFFFFFFFF;
constexpr char const* WhoIs = "81 0B 00 08 01 00 10 08";
constexpr char const* GlobalWhoIs = "81 0B 00 0C 01 20 FF FF 00 FF 10 08";

simulator::UdpOptions Broadcasting() {
    simulator::UdpOptions options;
    options.sendsBroadcasts = true;
    return options;
}

class Broadcast : public ::testing::Test {
protected:
    Server& Start(std::string const& deviceFile, std::string const& address = "127.0.0.1") {
        std::string const all = std::to_string(port);
        servers.push_back(std::make_unique<Server>(
            simulator::ParseDeviceFile("t", deviceFile),
            CommandLine::Parse({"t", "--bind", address, "--port", all, "--duration", "30"}),
            clocks.emplace_back()));
        std::ostringstream out;
        servers.back()->Announce(out);
        ready += out.str();
        if (port == 0) {
            port = static_cast<std::uint16_t>(std::stoi(ready.substr(ready.rfind(':') + 1)));
        }
        return *servers.back();
    }

    // The answers to datagrams, each as its sender and its octets after the BVLC, in their order.
    std::vector<std::string> Answers(std::uint32_t address, std::vector<std::string> const& datagrams) {
        for (std::string const& datagram : datagrams) {
            client.Send({{address, port}, test::Hex(datagram)});
        }
        for (auto const& server : servers) {
            server->Run(-1);
        }
        std::vector<std::string> answers;
        while (auto const answer = client.Receive()) {
            std::string const text = answer->peer.Text();
            answers.push_back(text.substr(0, text.find(':')) + " " + test::ToHex(answer->octets).substr(12));
        }
        std::sort(answers.begin(), answers.end());
        return answers;
    }

    static std::string IAm(std::string const& instance, std::string const& npci = "01 00") {
        return npci + " 10 00 C4 02 00 00 " + instance + " 22 05 C4 91 01 22 03 E7";
    }

    using Texts = std::vector<std::string>;

    std::deque<test::RunningClock> clocks;
    std::vector<std::unique_ptr<Server>> servers;
    simulator::UdpSocket client{Endpoint{Loopback, 0}, Broadcasting()};
    std::uint16_t port = 0;
    std::string ready;
};

}  // namespace

TEST_F(Broadcast, ADeviceBoundToOneAddressHearsThatOfItsNetwork) {
    Start("device{name = 'A', instance = 1}");
    EXPECT_EQ(Answers(LoopbackBroadcast, {WhoIs}), Texts{"127.0.0.1 " + IAm("01")});
}

TEST_F(Broadcast, ItHearsTheLimitedBroadcastToo) {
    Start("device{name = 'A', instance = 1}");
    EXPECT_EQ(Answers(LimitedBroadcast, {WhoIs}), Texts{"127.0.0.1 " + IAm("01")});
}

TEST_F(Broadcast, DevicesOfOnePortAndDifferentAddressesEachHearIt) {
    Start("device{name = 'A', instance = 1}");
    Start("device{name = 'B', instance = 2}", "127.0.0.2");
    Start("device{name = 'C', instance = 3}", "127.0.0.3");
    EXPECT_EQ(Answers(LoopbackBroadcast, {WhoIs}),
              (Texts{"127.0.0.1 " + IAm("01"), "127.0.0.2 " + IAm("02"), "127.0.0.3 " + IAm("03")}));
}

TEST_F(Broadcast, AnAddressOfTheirOwnCannotBeShared) {
    Start("device{name = 'A', instance = 1}");
    EXPECT_THROW(Start("device{name = 'B', instance = 2}"), std::system_error);
}

TEST_F(Broadcast, AllDevicesBehindARouterAnswerThroughIt) {
    Start(
        "device{name = 'A', instance = 1, router = {network = 5, mac = '0A14', name = 'R'}} "
        "device{name = 'B', instance = 2, router = {network = 6, mac = '07', name = 'R'}}");
    EXPECT_EQ(ready, "ready A 127.0.0.1:" + std::to_string(port) +
                         "\nready B 127.0.0.1:" + std::to_string(port) + "\n");
    std::string const a = "127.0.0.1 " + IAm("01", "01 08 00 05 02 0A 14");
    std::string const b = "127.0.0.1 " + IAm("02", "01 08 00 06 01 07");
    EXPECT_EQ(
        Answers(LoopbackBroadcast, {WhoIs, GlobalWhoIs, "81 0B 00 07 01 80 00", "81 0B 00 07 01 80 12"}),
        (Texts{a, b, "127.0.0.1 01 80 01 00 05 00 06", "127.0.0.1 01 80 13 00 01 01"}));
}

TEST_F(Broadcast, RequestsReachTheirStationBehindTheRouter) {
    Start(
        "device{name = 'A', instance = 1, router = {network = 5, mac = '0A14', name = 'R'}} "
        "device{name = 'B', instance = 2, router = {network = 6, mac = '07', name = 'R'}}");
    EXPECT_EQ(
        Answers(Loopback,
                {"81 0A 00 16 01 24 00 06 01 07 FF 02 75 01 0C 0C 02 3F FF FF 19 4D",
                 "81 0A 00 16 01 24 00 07 01 07 FF 02 75 01 0C 0C 02 3F FF FF 19 4D", "81 05 00 06 00 3C"}),
        (Texts{"127.0.0.1 00 30", "127.0.0.1 01 08 00 06 01 07 30 01 0C 0C 02 00 00 02 19 4D 3E 72 00 42 3F",
               "127.0.0.1 01 80 03 01 00 07"}));
}

TEST_F(Broadcast, AnAnswerToAllIsHeardOnThePortOfTheDevice) {
    Start("device{name = 'A', instance = 1, i_am = 'broadcast'}");
    simulator::UdpOptions shared;
    shared.sharesPort = true;
    simulator::UdpSocket listener({LoopbackBroadcast, port}, shared);
    EXPECT_EQ(Answers(Loopback, {"81 0A 00 08 01 00 10 08"}), Texts{});
    auto const heard = listener.Receive();
    ASSERT_TRUE(heard);
    EXPECT_EQ(heard->peer, (Endpoint{Loopback, port}));
    EXPECT_EQ(test::ToHex(heard->octets), "81 0B 00 19 " + IAm("01", "01 20 FF FF 00 FF"));
}

TEST_F(Broadcast, AnAnswerToAllCanComeFromAnotherAddress) {
    Start(
        "device{name = 'A', instance = 1, i_am = 'broadcast', faults = {fault{'other_address', on = "
        "'who_is'}}}");
    simulator::UdpOptions shared;
    shared.sharesPort = true;
    simulator::UdpSocket listener({LoopbackBroadcast, port}, shared);
    Answers(Loopback, {WhoIs});
    auto const heard = listener.Receive();
    ASSERT_TRUE(heard);
    EXPECT_EQ(heard->peer, (Endpoint{Loopback + 1, port}));
}

TEST_F(Broadcast, OneThatAnotherProgramKeepsForItselfIsReported) {
    simulator::UdpSocket const other({LoopbackBroadcast, 0});
    port = other.Local().port;
    testing::internal::CaptureStderr();
    Start("device{name = 'A', instance = 1}");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "bacnet-simulator: 127.255.255.255:" + std::to_string(port) +
                  ": Address already in use; broadcasts to that address are not answered\n");
    EXPECT_EQ(Answers(Loopback, {WhoIs}), Texts{"127.0.0.1 " + IAm("01")});
}

TEST_F(Broadcast, PortsThatAreUsedUpAreAMistake) {
    port = 65535;
    EXPECT_THROW(
        Start("device{name = 'A', instance = 1, port = 0} device{name = 'B', instance = 2} device{name "
              "= 'C', instance = 3}"),
        std::invalid_argument);
}

TEST_F(Broadcast, NamesStayOnTheirLine) {
    Start("device{name = 'A\\nready B\\27[2J', instance = 1}");
    EXPECT_EQ(ready, "ready A\\nready B\\x1B[2J 127.0.0.1:" + std::to_string(port) + "\n");
}
