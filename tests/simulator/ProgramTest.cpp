#include <gtest/gtest.h>
#include <unistd.h>

#include <sstream>
#include <stdexcept>
#include <system_error>

#include "CommandLine.h"
#include "DeviceFile.h"
#include "Hex.h"
#include "RunningClock.h"
#include "Server.h"

using simulator::CommandLine;
using simulator::Server;
using test::RunningClock;

namespace {

std::string MistakeOf(std::vector<std::string> const& arguments) {
    try {
        CommandLine::Parse(arguments);
    } catch (std::invalid_argument const& error) {
        return error.what();
    }
    return "no mistake";
}

std::vector<simulator::Device> Devices(std::string const& text = "device{name = 'D', instance = 1}") {
    return simulator::ParseDeviceFile("test.lua", text);
}

CommandLine AnyPort() {
    return CommandLine::Parse({"x.lua", "--port", "0", "--duration", "30"});
}

// The port in "ready NAME 127.0.0.1:PORT".
std::uint16_t PortOf(std::string const& line) {
    return static_cast<std::uint16_t>(std::stoi(line.substr(line.rfind(':') + 1)));
}

}  // namespace

TEST(CommandLine, Defaults) {
    CommandLine const line = CommandLine::Parse({"plant.lua"});
    EXPECT_EQ(line.deviceFiles, std::vector<std::string>{"plant.lua"});
    EXPECT_EQ(line.devices, 1u);
    EXPECT_EQ(line.bindAddress, 0x7F000001u);
    EXPECT_EQ(line.port, 47808);
    EXPECT_FALSE(line.isVerbose);
    EXPECT_FALSE(line.duration);
    EXPECT_FALSE(line.exitsWithStdin);
}

TEST(CommandLine, AllOptions) {
    CommandLine const line = CommandLine::Parse({"--bind", "10.1.2.3", "--port", "0", "plant.lua",
                                                 "--verbose", "--duration", "1.5", "--exit-with-stdin"});
    EXPECT_EQ(line.bindAddress, 0x0A010203u);
    EXPECT_EQ(line.port, 0);
    EXPECT_TRUE(line.isVerbose);
    EXPECT_EQ(line.duration, std::chrono::milliseconds(1500));
    EXPECT_TRUE(line.exitsWithStdin);
    EXPECT_FALSE(CommandLine::Parse({"x", "--verbose", "--quiet"}).isVerbose);
    EXPECT_TRUE(CommandLine::Parse({"--help"}).wantsHelp);
    EXPECT_TRUE(CommandLine::Parse({"--version"}).wantsVersion);
}

TEST(CommandLine, SeveralDeviceFilesAndDevices) {
    CommandLine const line = CommandLine::Parse({"a.lua", "--devices", "300", "b.lua"});
    EXPECT_EQ(line.deviceFiles, (std::vector<std::string>{"a.lua", "b.lua"}));
    EXPECT_EQ(line.devices, 300u);
}

TEST(CommandLine, TheHelpHasEachOptionOfTheTableOnce) {
    std::string const help = CommandLine::Help();
    for (CommandLine::Option const& option : CommandLine::Options()) {
        std::string const line =
            std::string("\n  ") + option.name + " " + (option.value ? option.value : " ");
        EXPECT_NE(help.find(line), std::string::npos) << line;
        EXPECT_EQ(help.find(line), help.rfind(line)) << line;
    }
    EXPECT_NE(
        help.find("\n  --port N            UDP port of the first device (default 47808); 0 takes any free "
                  "port.\n                      Further devices"),
        std::string::npos);
}

TEST(CommandLine, Mistakes) {
    EXPECT_EQ(MistakeOf({}), "the device file is missing");
    EXPECT_EQ(MistakeOf({"a", ""}), "unexpected argument \"\"");
    EXPECT_EQ(MistakeOf({"a", "--devices", "0"}), "--devices: \"0\" is not a number from 1 to 10000");
    EXPECT_EQ(MistakeOf({"a", "--devices", "10001"}), "--devices: \"10001\" is not a number from 1 to 10000");
    EXPECT_EQ(MistakeOf({"a", "--fast"}), "unexpected argument \"--fast\"");
    EXPECT_EQ(MistakeOf({"a", "--port"}), "--port: a value is missing");
    EXPECT_EQ(MistakeOf({"a", "--port", "65536"}), "--port: \"65536\" is not a port from 0 to 65535");
    EXPECT_EQ(MistakeOf({"a", "--port", "-1"}), "--port: \"-1\" is not a port from 0 to 65535");
    EXPECT_EQ(MistakeOf({"a", "--bind", "localhost"}), "--bind: \"localhost\" is not an IPv4 address");
    EXPECT_EQ(MistakeOf({"a", "--duration", "soon"}), "--duration: \"soon\" is not a number of seconds");
    EXPECT_EQ(MistakeOf({"a", "--duration", "nan"}), "--duration: \"nan\" is not a number of seconds");
    EXPECT_EQ(MistakeOf({"a", "--duration", "-1"}), "--duration: \"-1\" is not a number of seconds");
}

TEST(Server, AnnouncesEveryDeviceAndAnswers) {
    RunningClock const clock;
    Server server(Devices("device{name = 'A', instance = 1} device{name = 'B b', instance = 2}"), AnyPort(),
                  clock);
    std::ostringstream out;
    server.Announce(out);
    std::istringstream lines(out.str());
    std::string first, second;
    std::getline(lines, first);
    std::getline(lines, second);
    EXPECT_EQ(first.substr(0, 18), "ready A 127.0.0.1:");
    EXPECT_EQ(second.substr(0, 20), "ready B b 127.0.0.1:");
    EXPECT_NE(PortOf(first), PortOf(second));

    simulator::UdpSocket client({0x7F000001, 0});
    client.Send({{0x7F000001, PortOf(second)}, test::Hex("81 0A 00 08 01 00 10 08")});
    server.Run(-1);  // until 30 seconds of the clock have passed
    auto const answer = client.Receive();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->peer.port, PortOf(second));
    EXPECT_EQ(test::ToHex(answer->octets), "81 0A 00 15 01 00 10 00 C4 02 00 00 02 22 05 C4 91 01 22 03 E7");
}

TEST(Server, ReportsEachWriteIfVerbose) {
    RunningClock const clock;
    CommandLine const options = CommandLine::Parse({"x.lua", "--port", "0", "--duration", "30", "--verbose"});
    Server server(Devices("device{name = 'D', instance = 1, objects = {binary_value{instance = 1}}}"),
                  options, clock);
    std::ostringstream out;
    server.Announce(out);
    simulator::UdpSocket client({0x7F000001, 0});
    client.Send({{0x7F000001, PortOf(out.str())},
                 test::Hex("81 0A 00 17 01 04 00 05 01 0F 0C 01 40 00 01 19 55 3E 91 01 3F 49 08")});
    testing::internal::CaptureStderr();
    server.Run(-1);
    std::string const log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(log.substr(0, log.find('\n')),
              "D write binary_value 1 present_value = Enumerated 1, priority 8: done");
}

TEST(Server, APortInUseIsAnError) {
    RunningClock const clock;
    simulator::UdpSocket const other({0x7F000001, 0});
    CommandLine options = AnyPort();
    options.port = other.Local().port;
    try {
        Server server(Devices(), options, clock);
        FAIL();
    } catch (std::system_error const& error) {
        EXPECT_EQ(std::string(error.what()), other.Local().Text() + ": Address already in use");
    }
}

TEST(Server, StopsWhenItsHandleSaysSo) {
    class StandingClock : public simulator::Clock {
    public:
        simulator::Moment Now() const override { return {}; }
    } const clock;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    Server server(Devices(), AnyPort(), clock);
    ASSERT_EQ(write(ends[1], "x", 1), 1);
    server.Run(ends[0]);
    close(ends[0]);
    close(ends[1]);
}
