#include "RequestGate.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <thread>

using namespace workbench;

namespace {

class RequestGateTest : public testing::Test {
protected:
    RequestGateTest() {
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
        limits.line = 20;
        limits.head = 60;
        limits.body = 10;
        limits.request = std::chrono::milliseconds(50);
        limits.answer = std::chrono::milliseconds(50);
    }
    ~RequestGateTest() override {
        close(ends[0]);
        Hang();
    }

    void Send(std::string const& text) const {
        EXPECT_EQ(send(ends[1], text.data(), text.size(), MSG_NOSIGNAL), static_cast<ssize_t>(text.size()));
    }
    void Hang() {
        if (ends[1] >= 0) {
            close(ends[1]);
        }
        ends[1] = -1;
    }

    static std::string ReadAll(RequestGate& gate) {
        std::string text;
        std::array<char, 7> octets{};
        for (long count = 0; (count = gate.Read(octets.data(), octets.size())) > 0;) {
            text.append(octets.data(), static_cast<std::size_t>(count));
        }
        return text;
    }

    std::array<int, 2> ends{};
    GateLimits limits;
};

TEST_F(RequestGateTest, PassesARequestOn) {
    RequestGate gate(ends[0], limits);
    Send("POST / HTTP/1.1\r\nHost: a\r\n\r\nbody");
    Send("!");
    EXPECT_EQ(gate.ReadHead(), RequestGate::Outcome::Ready);
    Hang();
    EXPECT_EQ(ReadAll(gate), "POST / HTTP/1.1\r\nHost: a\r\n\r\nbody!");
}

TEST_F(RequestGateTest, FindsTheEndOfAHeadThatComesInParts) {
    RequestGate gate(ends[0], limits);
    limits.request = std::chrono::minutes(1);
    RequestGate patient(ends[0], limits);
    std::thread sender([this] {
        for (char const c : std::string("GET / HTTP/1.1\r\n\r\n")) {
            Send(std::string(1, c));
        }
    });
    EXPECT_EQ(patient.ReadHead(), RequestGate::Outcome::Ready);
    sender.join();
}

TEST_F(RequestGateTest, EndsALineAHeadOrABodyThatIsTooLong) {
    {
        RequestGate gate(ends[0], limits);
        Send("GET /aaaaaaaaaaaaaaaaaaaaa");
        EXPECT_EQ(gate.ReadHead(), RequestGate::Outcome::LineTooLong);
    }
    {
        RequestGate gate(ends[0], limits);
        Send("GET / HTTP/1.1\r\n" + std::string(60, 'x'));
        EXPECT_EQ(gate.ReadHead(), RequestGate::Outcome::HeadTooLarge);
    }
    RequestGate gate(ends[0], limits);
    Send("GET / HTTP/1.1\r\n\r\n" + std::string(200, 'x'));
    EXPECT_EQ(gate.ReadHead(), RequestGate::Outcome::Ready);
    ReadAll(gate);
    Send("more");
    std::array<char, 4> octets{};
    EXPECT_EQ(gate.Read(octets.data(), octets.size()), -1);
    EXPECT_EQ(gate.LastOutcome(), RequestGate::Outcome::BodyTooLarge);
}

TEST_F(RequestGateTest, EndsARequestThatIsTooSlowAsAWhole) {
    RequestGate gate(ends[0], limits);
    Send("GET / HTTP/1.1\r\n");
    EXPECT_EQ(gate.ReadHead(), RequestGate::Outcome::TooSlow);
}

TEST_F(RequestGateTest, SeesThatTheOtherSideHasGone) {
    RequestGate gate(ends[0], limits);
    EXPECT_TRUE(gate.IsConnected());
    Hang();
    EXPECT_FALSE(gate.IsConnected());
    EXPECT_EQ(gate.ReadHead(), RequestGate::Outcome::Closed);
}

TEST_F(RequestGateTest, DoesNotWriteForEverToAClientThatReadsNothing) {
    RequestGate gate(ends[0], limits);
    std::string const much(std::size_t{16} << 20, 'x');
    EXPECT_EQ(gate.Write(much.data(), much.size()), -1);
}

}  // namespace
