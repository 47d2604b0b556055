#include "DiscoveryLink.h"

#include <gtest/gtest.h>

using namespace standard;

namespace {

constexpr std::uint32_t Loopback = 0x7F000001;
constexpr std::uint32_t LoopbackBroadcast = 0x7FFFFFFF;
Interface const Local{"lo", Loopback, LoopbackBroadcast, true};

UdpOptions Broadcasting(bool sharesPort = false) {
    UdpOptions options;
    options.sendsBroadcasts = true;
    options.sharesPort = sharesPort;
    return options;
}

std::uint16_t FreePort() {
    return UdpSocket({0, 0}).Local().port;
}

// What the link receives first, as text; empty if nothing comes.
std::string Heard(DiscoveryLink& link, std::chrono::milliseconds wait = std::chrono::seconds(10)) {
    auto const datagram = link.Receive(link.Now() + wait);
    return datagram ? std::string(datagram->octets.begin(), datagram->octets.end()) : "";
}

void Say(UdpLink& device, Endpoint const& to, char letter) {
    device.Send({to, {letter}});
}

}  // namespace

TEST(DiscoveryLink, SendsFromTheBacnetPortIfNobodyHoldsIt) {
    std::uint16_t const port = FreePort();
    DiscoveryLink link(Local, port);
    EXPECT_EQ(link.Local().port, port);
    EXPECT_TRUE(link.Limits().empty()) << link.Limits().front();
    UdpLink device({Loopback + 1, port}, nullptr, Broadcasting());
    link.Send({device.Local(), {'q'}});
    auto const question = device.Receive(device.Now() + std::chrono::seconds(10));
    ASSERT_TRUE(question);
    EXPECT_EQ(question->peer, link.Local());
    Say(device, link.Local(), 'u');
    EXPECT_EQ(Heard(link), "u");
    Say(device, {LoopbackBroadcast, port}, 'b');
    EXPECT_EQ(Heard(link), "b");
}

TEST(DiscoveryLink, HearsBroadcastsBesideAProgramThatHoldsThePort) {
    UdpLink holder({Loopback, 0});
    std::uint16_t const port = holder.Local().port;
    DiscoveryLink link(Local, port);
    EXPECT_NE(link.Local().port, port);
    ASSERT_EQ(link.Limits().size(), 1u);
    EXPECT_EQ(link.Limits()[0], "Another program holds 127.0.0.1:" + std::to_string(port) +
                                    ": answers that devices send to that port as unicast are not seen.");
    UdpLink device({Loopback + 1, port}, nullptr, Broadcasting());
    Say(device, {LoopbackBroadcast, port}, 'b');
    EXPECT_EQ(Heard(link), "b");
    Say(device, {LoopbackBroadcast, link.Local().port}, 'o');
    EXPECT_EQ(Heard(link), "o");
    Say(device, link.Local(), 'u');
    EXPECT_EQ(Heard(link), "u");
}

TEST(DiscoveryLink, LeavesUnicastsToTheProgramThatHoldsThePort) {
    UdpLink holder({Loopback, 0});
    DiscoveryLink link(Local, holder.Local().port);
    UdpLink device({Loopback + 1, 0}, nullptr, Broadcasting());
    Say(device, holder.Local(), 'x');
    auto const taken = holder.Receive(holder.Now() + std::chrono::seconds(10));
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->octets, Octets{'x'});
    EXPECT_EQ(Heard(link, std::chrono::milliseconds(0)), "");
}

TEST(DiscoveryLink, SharesBroadcastsWithAProgramOfAllAddressesThatSharesToo) {
    UdpLink holder({0, 0}, nullptr, Broadcasting(true));
    std::uint16_t const port = holder.Local().port;
    DiscoveryLink link(Local, port);
    UdpLink device({Loopback + 1, 0}, nullptr, Broadcasting());
    Say(device, {LoopbackBroadcast, port}, 'b');
    EXPECT_EQ(Heard(link), "b");
    EXPECT_TRUE(holder.Receive(holder.Now() + std::chrono::seconds(10)));
}

TEST(DiscoveryLink, ReportsThatAProgramSharesNoBroadcasts) {
    UdpLink holder({0, 0});
    std::uint16_t const port = holder.Local().port;
    DiscoveryLink link(Local, port);
    ASSERT_EQ(link.Limits().size(), 2u);
    EXPECT_EQ(link.Limits()[1], "Broadcasts to 127.255.255.255:" + std::to_string(port) +
                                    " cannot be received (Address already in use): devices that answer by "
                                    "broadcast are not seen.");
    UdpLink device({Loopback + 1, 0}, nullptr, Broadcasting());
    Say(device, link.Local(), 'u');
    EXPECT_EQ(Heard(link), "u");
}

TEST(DiscoveryLink, TwoOnTheSamePortHearTheSameBroadcast) {
    std::uint16_t const port = FreePort();
    DiscoveryLink first(Local, port);
    DiscoveryLink second(Local, port);
    UdpLink device({Loopback + 1, 0}, nullptr, Broadcasting());
    Say(device, {LoopbackBroadcast, port}, 'b');
    EXPECT_EQ(Heard(first), "b");
    EXPECT_EQ(Heard(second), "b");
}

TEST(DiscoveryLink, ReportsOnceWhatCannotBeSent) {
    DiscoveryLink link(Local, FreePort());
    Octets const tooLong(70000, 'x');
    link.Send({{Loopback + 1, 9}, tooLong});
    link.Send({{Loopback + 1, 9}, tooLong});
    ASSERT_EQ(link.Limits().size(), 1u);
    EXPECT_EQ(link.Limits()[0], "Nothing could be sent to 127.0.0.2:9 (Message too long).");
}

TEST(DiscoveryLink, AnAddressOfAnotherMachineCannotBeUsed) {
    EXPECT_THROW(DiscoveryLink({"none", 0xC0000201, std::nullopt, false}), std::system_error);
}
