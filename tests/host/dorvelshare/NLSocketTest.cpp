// The runtime's sockets over real sockets on this machine, on ports that the system chooses.

#include "dorvelshare/NLSocket.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <thread>

#include "ClockedSystem.h"
#include "Hex.h"
#include "dorvelshare/HostEnvironment.h"

using test::Hex;
using test::Octets;
using test::ToHex;

namespace {

constexpr unsigned int Loopback = 0x7F000001;

// The device at the other end.
class PeerSocket {
public:
    PeerSocket() : handle(dorvel::SystemEnvironment().Open(0)) {
        NLMakeAddress(&address, Loopback, dorvel::SystemEnvironment().LocalPort(handle));
    }
    ~PeerSocket() { dorvel::SystemEnvironment().Close(handle); }
    PeerSocket(PeerSocket const&) = delete;
    PeerSocket& operator=(PeerSocket const&) = delete;

    sockaddr_in* Address() { return &address; }
    unsigned short Port() const { return ntohs(address.sin_port); }

    void SendTo(unsigned short port, Octets const& datagram) {
        sockaddr_in target{};
        NLMakeAddress(&target, Loopback, port);
        ASSERT_TRUE(dorvel::SystemEnvironment().Send(handle, target, datagram.data(),
                                                     static_cast<int>(datagram.size())));
    }

    Octets Receive() {
        Octets datagram(1500);
        sockaddr_in sender{};
        int const length = dorvel::SystemEnvironment().Receive(handle, sender, datagram.data(), 1500, 1000);
        datagram.resize(static_cast<std::size_t>(std::max(length, 0)));
        return datagram;
    }

    bool IsSilent() {
        char octet = 0;
        sockaddr_in sender{};
        return dorvel::SystemEnvironment().Receive(handle, sender, &octet, 1, 0) < 0;
    }

private:
    int handle;
    sockaddr_in address{};
};

class NLSocketTest : public testing::Test {
protected:
    NLSocketTest() { NLInitSocket(&socket); }
    ~NLSocketTest() override { NLCloseSocket(&socket); }

    int Exchange(Octets const& request, int timeout, int retries = 0) {
        return NLSendReceive(&socket, peer.Address(), request.data(), static_cast<int>(request.size()),
                             buffer, sizeof buffer, timeout, retries, 1, 1);
    }
    int Wait(int timeout) {
        return NLSendReceive(&socket, peer.Address(), nullptr, 0, buffer, sizeof buffer, timeout, 0, 1, 1);
    }
    // Opens the socket, so that the peer knows where to send.
    void Open() { ASSERT_EQ(NLTryOpenUDPSocket(&socket, 0, 1), 0); }
    std::string Received(int length) const { return ToHex(Octets(buffer, buffer + std::max(length, 0))); }

    test::ClockedSystem environment;  // each test is one exchange
    NLSocket socket{};
    PeerSocket peer;
    char buffer[1500] = {};
};

}  // namespace

TEST_F(NLSocketTest, InitOpensNothing) {
    EXPECT_EQ(socket.open, 0);
    EXPECT_EQ(socket.port, 47808);
    EXPECT_EQ(socket.handle, -1);
}

TEST_F(NLSocketTest, TheOpenMarkIsTheFirstOctetAndThePortTheThird) {
    char const* const octets = reinterpret_cast<char const*>(&socket);
    EXPECT_EQ(static_cast<void const*>(octets), static_cast<void const*>(&socket.open));
    EXPECT_EQ(static_cast<void const*>(octets + 2), static_cast<void const*>(&socket.port));
}

TEST_F(NLSocketTest, AClosedSocketIsOpenedAtItsFirstUse) {
    EXPECT_EQ(Exchange(Hex("01 02"), 0), 0);
    EXPECT_NE(socket.open, 0);
    EXPECT_NE(socket.port, 0);
    EXPECT_EQ(ToHex(peer.Receive()), "01 02");
}

TEST_F(NLSocketTest, GivesTheAnswerToARequest) {
    Open();
    peer.SendTo(socket.port, Hex("81 0A FF"));
    int const length = Exchange(Hex("01"), 1000);
    EXPECT_EQ(length, 3);
    EXPECT_EQ(Received(length), "81 0A FF");
    EXPECT_EQ(ToHex(peer.Receive()), "01");
}

TEST_F(NLSocketTest, ALateAnswerReachesAClosedPort) {
    Open();
    unsigned short const port = socket.port;
    EXPECT_EQ(Exchange(Hex("01"), 0), 0);
    EXPECT_EQ(Exchange(Hex("02"), 0), 0);
    ASSERT_NE(socket.port, port);
    peer.SendTo(port, Hex("81"));
    EXPECT_EQ(Wait(20), 0);
    peer.SendTo(socket.port, Hex("82"));
    EXPECT_EQ(Received(Wait(1000)), "82");
}

TEST_F(NLSocketTest, ReceivesADatagramFromAnySender) {
    Open();
    PeerSocket stranger;
    stranger.SendTo(socket.port, Hex("07"));
    EXPECT_EQ(Received(Exchange(Hex("AA"), 1000)), "07");
}

TEST_F(NLSocketTest, SendsNothingWithoutData) {
    Open();
    EXPECT_EQ(Wait(0), 0);
    EXPECT_TRUE(peer.IsSilent());
}

TEST_F(NLSocketTest, WaitsUntilTheTimeOutAndNoLonger) {
    Open();
    for (int const timeOut : {20, 1000}) {  // by poll, and in the socket
        auto const start = std::chrono::steady_clock::now();
        EXPECT_EQ(Wait(timeOut), 0);
        auto const waited = std::chrono::steady_clock::now() - start;
        EXPECT_GE(waited, std::chrono::milliseconds(timeOut));
        EXPECT_LT(waited, std::chrono::seconds(5));
    }
}

TEST_F(NLSocketTest, SignalsDoNotShortenTheWait) {
    Open();
    struct sigaction before {};
    struct sigaction nothing {};
    nothing.sa_handler = [](int) {};
    ASSERT_EQ(::sigaction(SIGUSR1, &nothing, &before), 0);
    std::atomic<bool> isWaiting{true};
    std::thread disturber([&isWaiting, waiter = ::pthread_self()] {
        while (isWaiting) {
            ::pthread_kill(waiter, SIGUSR1);
            std::this_thread::yield();
        }
    });
    for (int const timeOut : {20, 1000}) {
        auto const start = std::chrono::steady_clock::now();
        EXPECT_EQ(Wait(timeOut), 0);
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(timeOut));
    }
    isWaiting = false;
    disturber.join();
    ::sigaction(SIGUSR1, &before, nullptr);
}

TEST_F(NLSocketTest, ANegativeTimeOutDoesNotWait) {
    Open();
    EXPECT_EQ(Wait(-1), 0);
    peer.SendTo(socket.port, Hex("05"));
    EXPECT_EQ(Received(Wait(-1)), "05");
}

TEST_F(NLSocketTest, ALongerDatagramIsCutToTheBuffer) {
    Open();
    peer.SendTo(socket.port, Hex("01 02 03 04"));
    EXPECT_EQ(NLSendReceive(&socket, peer.Address(), nullptr, 0, buffer, 3, 1000, 0, 1, 1), 3);
    EXPECT_EQ(ToHex(Octets(buffer, buffer + 4)), "01 02 03 00");
    EXPECT_EQ(Wait(0), 0);
}

TEST_F(NLSocketTest, ADatagramOf1500OctetsIsReceivedWhole) {
    Open();
    peer.SendTo(socket.port, Octets(1500, 'x'));
    EXPECT_EQ(Wait(1000), 1500);
}

TEST_F(NLSocketTest, AnEmptyDatagramCountsAsNothing) {
    Open();
    peer.SendTo(socket.port, {});
    EXPECT_EQ(Wait(1000), 0);
}

TEST_F(NLSocketTest, RepeatsARequestAsOftenAsRetriesSay) {
    EXPECT_EQ(Exchange(Hex("01"), 0, 2), 0);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(ToHex(peer.Receive()), "01");
    }
    EXPECT_TRUE(peer.IsSilent());
}

TEST_F(NLSocketTest, SendOnlyDoesNotReceive) {
    Open();
    peer.SendTo(socket.port, Hex("09"));
    Octets const request = Hex("01");
    EXPECT_EQ(NLSendReceive(&socket, peer.Address(), request.data(), 1, buffer, sizeof buffer, 1000, 0, 0, 1),
              0);
    EXPECT_EQ(ToHex(peer.Receive()), "01");
    EXPECT_EQ(Received(Wait(1000)), "09");
}

TEST_F(NLSocketTest, ADatagramThatCannotBeSentFailsAtOnce) {
    Octets const request(70'000);  // no datagram is that long
    EXPECT_LT(Exchange(request, 1000), 0);
    EXPECT_LT(NLSendReceive(&socket, nullptr, request.data(), 1, buffer, 1, 1000, 0, 1, 1), 0);
    EXPECT_LT(NLSendReceive(&socket, peer.Address(), nullptr, 5, buffer, 1, 1000, 0, 1, 1), 0);
    EXPECT_LT(NLSendReceive(&socket, peer.Address(), request.data(), -1, buffer, 1, 1000, 0, 1, 1), 0);
}

TEST_F(NLSocketTest, AClosedPortOfAnEarlierRequestNeitherEndsTheWaitNorHangs) {
    Open();
    sockaddr_in nobody{};
    {
        PeerSocket gone;
        NLMakeAddress(&nobody, Loopback, gone.Port());
    }
    // Only a connected socket is notified that the port is closed.
    ASSERT_EQ(::connect(socket.handle, reinterpret_cast<sockaddr*>(&nobody), sizeof nobody), 0);
    Octets const request = Hex("01");
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(environment.Send(socket.handle, nobody, request.data(), 1));
        auto const start = std::chrono::steady_clock::now();
        EXPECT_EQ(Wait(20), 0);
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(20));
    }
}

TEST_F(NLSocketTest, AnInvalidHandleDoesNotHang) {
    Open();
    ::close(socket.handle);
    EXPECT_EQ(Wait(60'000), 0);
    socket.open = 0;
}

TEST_F(NLSocketTest, TryOpenTakesTheNextFreePort) {
    PeerSocket busy;
    if (busy.Port() > 65000) {
        GTEST_SKIP() << "no ports above";
    }
    ASSERT_EQ(NLTryOpenUDPSocket(&socket, busy.Port(), 100), 0);
    EXPECT_GT(socket.port, busy.Port());
    EXPECT_LT(socket.port, busy.Port() + 100);
}

TEST_F(NLSocketTest, TryOpenFailsWithoutAFreePort) {
    PeerSocket busy;
    EXPECT_EQ(NLTryOpenUDPSocket(&socket, busy.Port(), 1), -1);
    EXPECT_EQ(socket.open, 0);
    EXPECT_EQ(NLTryOpenUDPSocket(&socket, 0, 0), -1);
}

TEST_F(NLSocketTest, TryOpenClosesAnOpenSocketFirst) {
    Open();
    unsigned short const port = socket.port;
    EXPECT_EQ(NLTryOpenUDPSocket(&socket, port, 1), 0);  // free again
    EXPECT_EQ(socket.port, port);
}

TEST_F(NLSocketTest, ClosingTwiceIsHarmless) {
    Open();
    NLCloseSocket(&socket);
    EXPECT_EQ(socket.open, 0);
    NLCloseSocket(&socket);
    EXPECT_EQ(socket.open, 0);
}

TEST(NLAddress, TakesTheAddressInHostOrder) {
    sockaddr_in address{};
    NLMakeAddress(&address, 0xC0A80105, 47808);
    EXPECT_EQ(address.sin_family, AF_INET);
    EXPECT_STREQ(::inet_ntoa(address.sin_addr), "192.168.1.5");
    EXPECT_EQ(ntohs(address.sin_port), 47808);
}

TEST(NLAddress, ReadsDottedTexts) {
    EXPECT_EQ(IPAddressFromString("192.168.1.5"), 0xC0A80105u);
    EXPECT_EQ(IPAddressFromString("255.255.255.255"), 0xFFFFFFFFu);
    for (char const* text : {"", "localhost", "1.2.3", "1.2.3.256", "1.2.3.4 ", "1.2.3.4:5"}) {
        EXPECT_EQ(IPAddressFromString(text), 0u) << text;
    }
    EXPECT_EQ(IPAddressFromString(nullptr), 0u);
}
