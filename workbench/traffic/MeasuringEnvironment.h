#pragma once

#include <map>
#include <mutex>

#include "ForwardingEnvironment.h"
#include "RoundTrips.h"

namespace workbench {

struct TrafficFigures {
    unsigned long long requests = 0;  // datagrams sent
    unsigned long long answers = 0;   // datagrams received
    // From a datagram sent to the first one received after it on the same socket, if it comes while somebody
    // waits for it: what is dropped later is an answer and no round trip.
    RoundTrips trips;
};

// Counts datagrams and measures round trips, and passes everything on.
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
    std::map<int, long long> sent;  // when the request left that still waits, by handle
};

}  // namespace workbench
