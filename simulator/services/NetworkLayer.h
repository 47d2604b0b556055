#pragma once

#include <optional>

#include "Peer.h"
#include "Standard.h"

namespace simulator {

// The network layer of the device (clause 6): finds out whether an NPDU is for it and frames its
// answers. With a position behind a router it plays that router too.
class NetworkLayer {
public:
    // A request that has arrived.
    struct Indication {
        Peer peer;
        bool isBroadcast;
        std::uint8_t priority;
        Octets apdu;
    };

    // Either of the two, or nothing if the NPDU is to be dropped.
    struct Result {
        std::optional<Indication> indication;
        std::optional<Octets> answer;  // an NPDU of the router for the sender
    };

    // `position` is where the device is, if it is behind a router; its MAC address is not empty.
    explicit NetworkLayer(std::optional<NetworkAddress> position) : m_position(std::move(position)) {}

    // `isBroadcast` says that the link brought the NPDU to everybody.
    Result receive(Endpoint const& sender, bool isBroadcast, Octets const& octets) const;
    // The NPDU that carries an answer.
    Octets send(Answer const& answer) const;

private:
    Result receiveAsRouter(Npdu const& npdu, Indication indication) const;
    Octets rejectNetwork(Npdu const& npdu) const;

    std::optional<NetworkAddress> m_position;
};

}  // namespace simulator
