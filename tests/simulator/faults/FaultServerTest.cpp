#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <sstream>

#include "DeviceFile.h"
#include "Hex.h"
#include "RunningClock.h"
#include "Server.h"

using simulator::CommandLine;
using simulator::Server;
using test::RunningClock;

namespace {

constexpr std::uint32_t Loopback = 0x7F000001;

// A device with faults on its socket, and a client that sends one request.
class FaultServer : public ::testing::Test {
protected:
    // The datagrams that come within 20 seconds.
    std::vector<simulator::Datagram> Answers(std::string const& faults) {
        RunningClock const clock;
        Server server(
            simulator::ParseDeviceFile("t", "device{name = 'D', instance = 1, faults = {" + faults + "}}"),
            CommandLine::Parse({"x.lua", "--port", "0", "--duration", "20"}), clock);
        std::ostringstream out;
        server.Announce(out);
        std::string const line = out.str();
        port = static_cast<std::uint16_t>(std::stoi(line.substr(line.rfind(':') + 1)));
        client.Send({{Loopback, port}, test::Hex("81 0A 00 11 01 04 02 75 01 0C 0C 02 00 00 01 19 70")});
        server.Run(-1);
        std::vector<simulator::Datagram> all;
        while (auto datagram = client.Receive()) {
            all.push_back(*datagram);
        }
        return all;
    }

    simulator::UdpSocket client{{Loopback, 0}};
    std::uint16_t port = 0;
};

std::string const Answer = "81 0A 00 14 01 00 30 01 0C 0C 02 00 00 01 19 70 3E 91 00 3F";

// Replaces standard input by a pipe for its lifetime.
class StandardInput {
public:
    explicit StandardInput(std::string const& text) : before(dup(STDIN_FILENO)) {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        EXPECT_EQ(write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
        close(ends[1]);
        dup2(ends[0], STDIN_FILENO);
        close(ends[0]);
    }
    ~StandardInput() {
        dup2(before, STDIN_FILENO);
        close(before);
    }
    StandardInput(StandardInput const&) = delete;
    StandardInput& operator=(StandardInput const&) = delete;

private:
    int before;
};

}  // namespace

TEST_F(FaultServer, FaultsOfTheFileAreThereFromTheStart) {
    EXPECT_TRUE(Answers("fault{'silence'}").empty());
    auto const all = Answers("fault{'duplicate'}");
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(test::ToHex(all[0].octets), Answer);
    EXPECT_EQ(all[0].peer, (simulator::Endpoint{Loopback, port}));
}

TEST_F(FaultServer, ALateAnswerIsSentAtItsTime) {
    EXPECT_TRUE(Answers("fault{'delay', seconds = 50}").empty());
    auto const all = Answers("fault{'delay', seconds = 10}");
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(test::ToHex(all[0].octets), Answer);
}

TEST_F(FaultServer, AnotherAddressIsTheNextOne) {
    auto const all = Answers("fault{'other_address'}");
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].peer, (simulator::Endpoint{Loopback + 1, port}));
    EXPECT_EQ(test::ToHex(all[0].octets), Answer);
}

TEST_F(FaultServer, CommandsAreCarriedOutAndAnswered) {
    StandardInput const input("fault D silence\nfaults\nfault D silense\nfault D " + std::string(3000, 'x') +
                              "\n");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    Answers("");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "D: silence\nD: silence\n");
    std::string const errors = testing::internal::GetCapturedStderr();
    EXPECT_EQ(errors,
              "fault: unknown fault \"silense\" (did you mean \"silence\"?)\n"
              "the line is longer than 1000 octets\n");
}
