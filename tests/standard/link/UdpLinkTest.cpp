#include "UdpLink.h"

#include <gtest/gtest.h>

#include <thread>

using namespace standard;
using std::chrono::milliseconds;

namespace {

constexpr Endpoint AnyPort{0x7F000001, 0};

}  // namespace

TEST(UdpLink, DeliversDatagrams) {
    UdpLink left(AnyPort);
    UdpLink right(AnyPort);
    left.Send({right.Local(), {'a', 'b'}});
    auto const datagram = right.Receive(right.Now() + std::chrono::seconds(10));
    ASSERT_TRUE(datagram);
    EXPECT_EQ(datagram->peer, left.Local());
    EXPECT_EQ(datagram->octets, (Octets{'a', 'b'}));
}

TEST(UdpLink, EndsAtTheDeadlineAndNotBefore) {
    UdpLink link(AnyPort);
    auto const deadline = link.Now() + milliseconds(20);
    EXPECT_FALSE(link.Receive(deadline));
    EXPECT_GE(link.Now(), deadline);
    EXPECT_FALSE(link.Receive(link.Now() - milliseconds(20)));
}

TEST(UdpLink, StopEndsTheWait) {
    std::atomic<bool> stop = false;
    UdpLink link(AnyPort, &stop);
    std::thread stopper([&] { stop = true; });
    EXPECT_FALSE(link.Receive(link.Now() + std::chrono::hours(1)));
    EXPECT_TRUE(link.IsStopped());
    stopper.join();
}

TEST(UdpLink, AnAddressOfAnotherMachineCannotBeBound) {
    EXPECT_THROW(UdpLink({0xC0000201, 0}), std::system_error);
}

TEST(UdpSocket, TheLabelOfAnAddressStandsForItsInterface) {
    UdpOptions options;
    for (char const* name : {"lo", "lo:1"}) {
        options.interfaceName = name;
        EXPECT_NO_THROW(UdpSocket({0x7F000001, 0}, options)) << name;
    }
    options.interfaceName = "none:1";
    EXPECT_THROW(UdpSocket({0x7F000001, 0}, options), std::system_error);
}
