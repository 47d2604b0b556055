#pragma once

#include <optional>

#include "Endpoint.h"
#include "Npdu.h"

namespace standard {

// The other side of a request, client or device: a station on the link, or one on another network behind a
// router on the link.
struct Peer {
    Endpoint endpoint;
    std::optional<NetworkAddress> remote;

    // "10.0.0.1:47808", or "station 0b of network 5 behind 10.0.0.1:47808".
    std::string Text() const;
};

inline bool operator==(Peer const& left, Peer const& right) {
    return left.endpoint == right.endpoint && left.remote == right.remote;
}

// Whether `station` can answer what was sent to `asked`: it is that station, or one of the network all of
// whose stations were asked, behind the same router.
bool IsAmong(Peer const& station, Peer const& asked);

// An APDU to be sent to a peer.
struct Answer {
    Peer peer;
    std::uint8_t priority;  // the network priority: that of the request
    Octets apdu;
};

}  // namespace standard
