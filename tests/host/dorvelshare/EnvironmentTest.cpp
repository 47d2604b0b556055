// The host over a scripted network in virtual time.

#include <fcntl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "ScriptedNetwork.h"
#include "VirtualSocket.h"
#include "dorvelshare/NLSocket.h"
#include "dorvelshare/RTime.h"

using test::ScriptedNetwork;
using test::VirtualSocket;

TEST(Environment, SocketsAndClockGoThroughTheReplacement) {
    ScriptedNetwork network;
    network.Expect("01 02").Answer("0A", 300);
    VirtualSocket socket;
    EXPECT_EQ(socket.Exchange(test::Hex("01 02"), 1000, 0), 1);
    EXPECT_EQ(socket.buffer[0], 0x0A);
    EXPECT_EQ(getRDateTime(), ScriptedNetwork::Start + 300 * ScriptedNetwork::UnitsPerMillisecond);
    EXPECT_EQ(network.OpenSockets(), 1);
}

TEST(Environment, EveryRetryWaitsTheWholeTimeOut) {
    ScriptedNetwork network;
    network.Expect("01");
    network.Expect("01");
    network.Expect("01").Answer("0A");
    VirtualSocket socket;
    EXPECT_EQ(socket.Exchange(test::Hex("01"), 1000, 5), 1);
    EXPECT_EQ(network.Elapsed(), 2000);
}

TEST(Environment, TryOpenSkipsBusyPorts) {
    ScriptedNetwork network;
    network.TakePort(47809);
    network.TakePort(47810);
    VirtualSocket socket;
    EXPECT_EQ(NLTryOpenUDPSocket(&socket.socket, 47809, 20), 0);
    EXPECT_EQ(socket.socket.port, 47811);
}

TEST(Environment, TryOpenEndsAtTheLastPort) {
    ScriptedNetwork network;
    network.TakePort(65535);
    VirtualSocket socket;
    EXPECT_EQ(NLTryOpenUDPSocket(&socket.socket, 65535, 20), -1);
}

TEST(Environment, LocalTimeDiffComesFromTheReplacement) {
    ScriptedNetwork network;
    network.SetLocalTimeDiff(36'000'000'000);
    EXPECT_EQ(GetLocalTimeDiff(), 36'000'000'000);
}

TEST(Environment, NullRestoresTheSystem) {
    { ScriptedNetwork network; }
    EXPECT_EQ(&dorvel::Environment(), &dorvel::SystemEnvironment());
}

TEST(SystemEnvironment, NowIsAFileTime) {
    long long const seconds = static_cast<long long>(std::time(nullptr));
    long long const ticks = getRDateTime();
    EXPECT_NEAR(static_cast<double>(ticks / 10'000'000 - 11'644'473'600), static_cast<double>(seconds), 2.0);
}

TEST(SystemEnvironment, SteadyNowCountsInUnitsOfAFileTime) {
    dorvel::HostEnvironment& system = dorvel::SystemEnvironment();
    int const handle = system.Open(0);
    long long const start = system.SteadyNow();
    sockaddr_in sender{};
    char octet = 0;
    EXPECT_EQ(system.Receive(handle, sender, &octet, 1, 20), -1);
    long long const passed = system.SteadyNow() - start;
    EXPECT_GE(passed, 20 * 10'000);
    EXPECT_LT(passed, 5000 * 10'000);
    system.Close(handle);
}

TEST(SystemEnvironment, LocalTimeDiffFollowsTheZoneOfTheSystem) {
    char const* const before = std::getenv("TZ");
    std::string const kept = before ? before : "";
    ::setenv("TZ", "EST5", 1);
    EXPECT_EQ(GetLocalTimeDiff(), -5 * 36'000'000'000);
    ::setenv("TZ", "<+0530>-5:30", 1);
    EXPECT_EQ(GetLocalTimeDiff(), 198'000'000'000);
    if (before) {
        ::setenv("TZ", kept.c_str(), 1);
    } else {
        ::unsetenv("TZ");
    }
    ::tzset();
}

TEST(SystemEnvironment, SocketsAreNotInherited) {
    int const handle = dorvel::SystemEnvironment().Open(0);
    ASSERT_GE(handle, 0);
    EXPECT_NE(::fcntl(handle, F_GETFD) & FD_CLOEXEC, 0);
    dorvel::SystemEnvironment().Close(handle);
}
