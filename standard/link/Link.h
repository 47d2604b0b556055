#pragma once

#include <chrono>
#include <optional>

#include "Endpoint.h"

namespace standard {

// What a client uses of the network and of time: UDP and the clock of the system, or a script in tests. Used
// by one thread at a time.
class Link {
public:
    using Time = std::chrono::steady_clock::time_point;

    virtual ~Link() = default;
    // A datagram that cannot be sent is lost without an error.
    virtual void Send(Datagram const& datagram) = 0;
    // Waits for the next datagram. No value at the deadline, or earlier if the link is stopped.
    virtual std::optional<Datagram> Receive(Time deadline) = 0;
    virtual Time Now() const = 0;
    // A client ends its request and starts no other one.
    virtual bool IsStopped() const { return false; }
};

}  // namespace standard
