#pragma once

#include "dorvelshare/HostEnvironment.h"

namespace test {

// The sockets of the operating system with a clock that only Pass advances. It replaces the operating system
// while it exists. Between two calls of Pass no time passes, however slow the machine is.
class ClockedSystem final : public dorvel::HostEnvironment {
public:
    ClockedSystem() { dorvel::SetEnvironment(this); }
    ~ClockedSystem() override { dorvel::SetEnvironment(nullptr); }
    ClockedSystem(ClockedSystem const&) = delete;
    ClockedSystem& operator=(ClockedSystem const&) = delete;

    void Pass(long long milliseconds) { time += milliseconds * 10'000; }

    int Open(unsigned short port) override { return system.Open(port); }
    unsigned short LocalPort(int handle) override { return system.LocalPort(handle); }
    void Close(int handle) override { system.Close(handle); }
    bool Send(int handle, sockaddr_in const& peer, void const* data, int length) override {
        return system.Send(handle, peer, data, length);
    }
    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) override {
        return system.Receive(handle, sender, buffer, size, timeout);
    }
    long long Now() override { return time; }
    long long SteadyNow() override { return time; }
    long long LocalTimeDiff() override { return 0; }

private:
    dorvel::HostEnvironment& system = dorvel::SystemEnvironment();
    long long time = 0;
};

}  // namespace test
