#pragma once

#include <optional>

#include "Endpoint.h"
#include "Npdu.h"

namespace standard {

// The client of a request: a station on the link, or one behind a router on the link.
struct Peer {
    Endpoint endpoint;
    std::optional<NetworkAddress> remote;
};

inline bool operator==(Peer const& left, Peer const& right) {
    return left.endpoint == right.endpoint && left.remote == right.remote;
}

// An APDU to be sent to a peer.
struct Answer {
    Peer peer;
    std::uint8_t priority;  // the network priority: that of the request
    Octets apdu;
};

}  // namespace standard
