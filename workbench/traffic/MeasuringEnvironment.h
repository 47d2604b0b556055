#pragma once

#include <map>
#include <mutex>

#include "Durations.h"
#include "ForwardingEnvironment.h"

namespace workbench {

struct TrafficFigures {
    unsigned long long requests = 0;  // datagrams sent
    unsigned long long answers = 0;   // datagrams received
    // From a datagram sent to the first one received after it on the same socket, if that comes while a call
    // waits for it. A datagram that comes later counts as an answer, not as a round trip.
    RoundTrips trips;
};

// Counts datagrams and measures round trips.
class MeasuringEnvironment : public ForwardingEnvironment {
public:
    using ForwardingEnvironment::ForwardingEnvironment;

    void Close(int handle) override;
    bool Send(int handle, sockaddr_in const& peer, void const* data, int length) override;
    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) override;

    TrafficFigures Figures() const;

private:
    mutable std::mutex mutex;
    TrafficFigures figures;
    std::map<int, long long> sent;  // when the pending request was sent, by handle
};

}  // namespace workbench
