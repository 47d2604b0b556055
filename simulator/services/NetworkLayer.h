#pragma once

#include <optional>

#include "Peer.h"
#include "Standard.h"

namespace simulator {

// The network layer of the device (clause 6): finds out whether an NPDU is for it and frames its
// answers. If the device is behind a router, it is that router too.
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

    // `devicePosition` is where the device is, if it is behind a router; its MAC address is not empty.
    explicit NetworkLayer(std::optional<NetworkAddress> devicePosition)
        : position(std::move(devicePosition)) {}

    // `isBroadcast` says that the link brought the NPDU to everybody.
    Result Receive(Endpoint const& sender, bool isBroadcast, Octets const& octets) const;
    // The NPDU that carries an answer.
    Octets Send(Answer const& answer) const;

private:
    Result ReceiveAsRouter(Npdu const& npdu, Indication indication) const;
    Octets RejectNetwork(Npdu const& npdu) const;

    std::optional<NetworkAddress> position;
};

}  // namespace simulator
