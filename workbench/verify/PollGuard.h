#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "ForwardingEnvironment.h"
#include "ObjectId.h"

namespace workbench {

// Stands between the driver and the network while it is verified. It lets reads and the acknowledgements of
// segments through and nothing else, so that nothing is ever written, notes the object that was requested
// last, and ends a poll that takes too long. One thread at a time.
class PollGuard : public ForwardingEnvironment {
public:
    // isStopped is asked before each datagram; when it is true, none is sent or received any more.
    PollGuard(dorvel::HostEnvironment& innerEnvironment, std::function<bool()> isStopped);

    // Before each cycle: the cycle may take so long, and no object has been requested.
    void BeginCycle(std::chrono::milliseconds limit);
    // Whether the limit of the cycle is over.
    bool IsOver() const { return isOver; }
    // The object of the latest read of the cycle.
    std::optional<standard::ObjectId> LastObject() const { return lastObject; }
    // Datagrams of the driver that were not let through, since the beginning.
    unsigned long long Withheld() const { return withheld; }

    bool Send(int handle, sockaddr_in const& peer, void const* data, int length) override;
    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) override;

private:
    bool MayGoOn();

    std::function<bool()> stopped;
    long long end = 0;  // on the steady clock
    bool isOver = false;
    std::optional<standard::ObjectId> lastObject;
    unsigned long long withheld = 0;
};

// Environment for the driver while the object lives.
class EnvironmentScope {
public:
    explicit EnvironmentScope(dorvel::HostEnvironment& environment) : before(dorvel::Environment()) {
        dorvel::SetEnvironment(&environment);
    }
    EnvironmentScope(EnvironmentScope const&) = delete;
    EnvironmentScope& operator=(EnvironmentScope const&) = delete;
    ~EnvironmentScope() { dorvel::SetEnvironment(&before); }

private:
    dorvel::HostEnvironment& before;
};

}  // namespace workbench
