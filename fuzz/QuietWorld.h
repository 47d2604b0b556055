#pragma once

#include <string_view>

#include "dorvelshare/HostEnvironment.h"
#include "dorvelshare/Trace.h"

namespace fuzz {

// A host environment in which every port is free, every datagram is sent, none arrives and time does not
// pass. Log lines, traces included, are formatted and dropped. There is one, which lives until the process
// ends.
class QuietWorld final : public dorvel::HostEnvironment {
public:
    static void Enter() {
        static QuietWorld world;
        dorvel::SetEnvironment(&world);
        dorvel::SetLogSink([](std::string_view) {});
        dorvel::EnableUserTrace(true);
    }

    int Open(unsigned short) override { return 3; }
    unsigned short LocalPort(int) override { return 50000; }
    void Close(int) override {}
    bool Send(int, sockaddr_in const&, void const*, int) override { return true; }
    int Receive(int, sockaddr_in&, void*, int, int) override { return -1; }
    // 1 January 2024, 00:00 UTC.
    long long Now() override { return 133485408000000000; }
    long long SteadyNow() override { return Now(); }
    long long LocalTimeDiff() override { return 0; }
};

}  // namespace fuzz
