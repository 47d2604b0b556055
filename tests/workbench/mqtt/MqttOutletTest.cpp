#include "MqttOutlet.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <sstream>

namespace {

using workbench::BrokerSettings;
using workbench::LogBuffer;
using workbench::Message;
using workbench::MqttOutlet;
using workbench::OutletHealth;
using workbench::PlantBoard;

// Publishes nothing.
class SilentPublisher : public workbench::Publisher {
public:
    Message Will(long long) override { return {"state", "gone", 1, true}; }
    std::vector<std::string> Subscriptions() const override { return {}; }
    void Connected(long long, workbench::MessageSink&) override {}
    void Disconnected() override {}
    void Publish(std::vector<workbench::SharedSnapshot> const&, long long, workbench::MessageSink&) override {
    }
    void Receive(workbench::ReceivedMessage const&, long long, workbench::MessageSink&) override {}
    void End(long long, workbench::MessageSink&) override {}
};

// A port of loopback that accepts connections, or only has the number if it does not listen. It answers
// nothing.
class Port {
public:
    explicit Port(bool listens) : handle(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        bind(handle, reinterpret_cast<sockaddr*>(&address), size);
        getsockname(handle, reinterpret_cast<sockaddr*>(&address), &size);
        number = ntohs(address.sin_port);
        if (listens) {
            listen(handle, 1);
        }
    }
    Port(Port const&) = delete;
    Port& operator=(Port const&) = delete;
    ~Port() { close(handle); }

    unsigned short Number() const { return number; }

private:
    int handle;
    unsigned short number = 0;
};

class MqttOutletTest : public ::testing::Test {
protected:
    std::unique_ptr<MqttOutlet> OutletTo(std::string const& host, unsigned short port) {
        BrokerSettings settings;
        settings.address = {host, port, false};
        settings.clientId = "dorvel-test";
        settings.login = {"plant", "top secret", {}};
        return std::make_unique<MqttOutlet>(
            settings, std::nullopt, [](auto&) { return std::make_unique<SilentPublisher>(); }, board, log);
    }

    std::ostringstream lines;
    LogBuffer log{&lines};
    PlantBoard board{{}};
};

// The connection of a broker that accepts and answers nothing is what a firewall makes of one.
TEST_F(MqttOutletTest, EndsWhileABrokerAnswersNothing) {
    Port const port(true);
    auto const outlet = OutletTo("127.0.0.1", port.Number());
    outlet->Start();
    outlet->Follow(nullptr);
    outlet->End();
    EXPECT_EQ(outlet->State().health, OutletHealth::Starting);
}

TEST_F(MqttOutletTest, EndsBeforeItsStartAndTwice) {
    auto const outlet = OutletTo("127.0.0.1", 1);
    outlet->End();
    outlet->End();
    EXPECT_EQ(lines.str(), "");
}

TEST_F(MqttOutletTest, ReportsWhyThereIsNoConnection) {
    Port const port(false);
    auto const outlet = OutletTo("127.0.0.1", port.Number());
    outlet->Start();
    while (outlet->State().health == OutletHealth::Starting) {
        std::this_thread::yield();
    }
    outlet->End();
    EXPECT_EQ(outlet->State().health, OutletHealth::Waiting);
    EXPECT_NE(lines.str().find("nobody accepts connections there"), std::string::npos);
    EXPECT_EQ(lines.str().find("secret"), std::string::npos);
}

}  // namespace
