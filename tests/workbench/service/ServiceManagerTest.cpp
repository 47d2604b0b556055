#ifdef WORKBENCH_HAS_SYSTEMD

#include "ServiceManager.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "TemporaryFolder.h"

namespace {

using std::chrono::milliseconds;
using workbench::ServiceManager;

// The socket of a service manager.
class ServiceManagerTest : public testing::Test {
protected:
    void SetUp() override {
        std::string const path = folder.Path() + "/notify";
        handle = socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        ASSERT_LT(path.size(), sizeof address.sun_path);
        std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
        ASSERT_EQ(bind(handle, reinterpret_cast<sockaddr const*>(&address), sizeof address), 0);
        setenv("NOTIFY_SOCKET", path.c_str(), 1);
    }
    void TearDown() override {
        close(handle);
        for (char const* const name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"}) {
            unsetenv(name);
        }
    }

    // The next report; empty if there is none.
    std::string Received() const {
        char octets[1000];
        ssize_t const length = recv(handle, octets, sizeof octets, 0);
        return length < 0 ? std::string() : std::string(octets, static_cast<std::size_t>(length));
    }

    test::TemporaryFolder folder;
    int handle = -1;
    ServiceManager::Clock::time_point const start{std::chrono::hours(1)};
};

TEST_F(ServiceManagerTest, ReportsReadyStatusAndStopping) {
    ServiceManager manager;
    ASSERT_TRUE(manager.IsPresent());
    manager.Ready();
    manager.Status("4 blocks");
    manager.Status("4 blocks");
    manager.Stopping();
    EXPECT_EQ(Received(), "READY=1");
    EXPECT_EQ(Received(), "STATUS=4 blocks");
    EXPECT_EQ(Received(), "STOPPING=1");
    EXPECT_EQ(Received(), "");
}

TEST_F(ServiceManagerTest, IsAliveAfterHalfOfTheWatchdogsTime) {
    setenv("WATCHDOG_USEC", "3000000", 1);
    ServiceManager manager;
    EXPECT_EQ(manager.LongestWait(), milliseconds(1500));
    manager.Alive(start);
    EXPECT_EQ(Received(), "WATCHDOG=1");
    manager.Alive(start + milliseconds(1499));
    EXPECT_EQ(Received(), "");
    manager.Alive(start + milliseconds(1500));
    EXPECT_EQ(Received(), "WATCHDOG=1");
}

TEST_F(ServiceManagerTest, AWatchdogOfAnotherProcessIsNotFed) {
    setenv("WATCHDOG_USEC", "3000000", 1);
    setenv("WATCHDOG_PID", "1", 1);
    ServiceManager manager;
    manager.Alive(start);
    EXPECT_EQ(Received(), "");
}

TEST_F(ServiceManagerTest, WithoutAServiceManagerNothingIsSent) {
    unsetenv("NOTIFY_SOCKET");
    ServiceManager manager;
    EXPECT_FALSE(manager.IsPresent());
    manager.Ready();
    manager.Status("4 blocks");
    manager.Alive(start);
    EXPECT_EQ(Received(), "");
}

}  // namespace

#endif
