#include <gtest/gtest.h>

#include "FakeEnvironment.h"
#include "PollGuard.h"

using namespace test;
using namespace workbench;

namespace {

// The octets of a datagram around an APDU.
std::string Datagram(std::string const& apdu, bool isNetworkMessage = false) {
    std::string datagram("\x81\x0A\x00\x00\x01", 5);
    datagram += isNetworkMessage ? '\x80' : '\x04';
    return datagram + apdu;
}

// A request for property 85 of an Analog Input.
std::string Request(char service, char instance = 7) {
    return Datagram(std::string("\x00\x75\x01", 3) + service + std::string("\x0C\x00\x00\x00", 4) + instance +
                    "\x1E\x09\x55\x1F");
}

class Guard : public testing::Test {
protected:
    void SetUp() override { guard.BeginCycle(std::chrono::seconds(10)); }

    bool Send(std::string const& datagram) {
        return guard.Send(1, Address("192.168.1.20", 47808), datagram.data(),
                          static_cast<int>(datagram.size()));
    }

    FakeEnvironment world;
    bool isStopped = false;
    PollGuard guard{world, [this] { return isStopped; }};
};

}  // namespace

TEST_F(Guard, LetsReadsAndAcknowledgementsOfSegmentsThrough) {
    EXPECT_TRUE(Send(Request(14)));
    EXPECT_TRUE(Send(Request(12)));
    EXPECT_TRUE(Send(Datagram(std::string("\x40\x01\x00\x01", 4))));
    EXPECT_EQ(world.sent.size(), 3u);
    EXPECT_EQ(guard.Withheld(), 0u);
}

TEST_F(Guard, LetsNoWriteAndNothingUnknownThrough) {
    EXPECT_FALSE(Send(Request(15)));
    EXPECT_FALSE(Send(Request(16)));
    EXPECT_FALSE(Send(Datagram(std::string("\x10\x08", 2))));
    EXPECT_FALSE(Send(Datagram(std::string("\x00", 1), true)));
    EXPECT_FALSE(Send("\x81\x0A"));
    EXPECT_FALSE(Send(""));
    EXPECT_TRUE(world.sent.empty());
    EXPECT_EQ(guard.Withheld(), 6u);
}

TEST_F(Guard, NotesTheObjectThatWasRequestedLast) {
    EXPECT_FALSE(guard.LastObject());
    Send(Request(14, 7));
    Send(Request(14, 8));
    Send(Datagram(std::string("\x40\x01\x00\x01", 4)));
    ASSERT_TRUE(guard.LastObject());
    EXPECT_EQ(guard.LastObject()->instance, 8u);
    guard.BeginCycle(std::chrono::seconds(10));
    EXPECT_FALSE(guard.LastObject());
}

TEST_F(Guard, EndsACycleThatTakesTooLong) {
    world.time += 99'999'999;
    EXPECT_TRUE(Send(Request(14)));
    world.time += 1;
    EXPECT_FALSE(Send(Request(14)));
    EXPECT_TRUE(guard.IsOver());
    char buffer[10];
    sockaddr_in sender{};
    world.Arrives(Address("192.168.1.20", 47808), "x");
    EXPECT_EQ(guard.Receive(1, sender, buffer, sizeof buffer, 1000), -1);
    guard.BeginCycle(std::chrono::seconds(10));
    EXPECT_EQ(guard.Receive(1, sender, buffer, sizeof buffer, 1000), 1);
}

TEST_F(Guard, SendsAndReceivesNothingOnceItIsStopped) {
    isStopped = true;
    char buffer[10];
    sockaddr_in sender{};
    world.Arrives(Address("192.168.1.20", 47808), "x");
    EXPECT_FALSE(Send(Request(14)));
    EXPECT_EQ(guard.Receive(1, sender, buffer, sizeof buffer, 1000), -1);
    EXPECT_FALSE(guard.IsOver());
}
