#pragma once

#include <optional>

#include "Peer.h"
#include "Standard.h"

namespace simulator {

// The network layer of the device (clause 6): decides whether an NPDU is for the device, and frames the
// answers. For a device behind a router it is the router too.
class NetworkLayer {
public:
    // A received request.
    struct Indication {
        Peer peer;
        bool isBroadcast;
        std::uint8_t priority;
        Octets apdu;
    };

    // A request, or the answer of the router. Neither if the NPDU is to be dropped.
    struct Result {
        std::optional<Indication> indication;
        std::optional<Octets> answer;  // an NPDU of the router for the sender
    };

    // `devicePosition` is the address of a device behind a router. Its MAC address must not be empty.
    explicit NetworkLayer(std::optional<NetworkAddress> devicePosition)
        : position(std::move(devicePosition)) {}

    // `isBroadcast` is true for an NPDU from a broadcast of the link.
    Result Receive(Endpoint const& sender, bool isBroadcast, Octets const& octets) const;
    // The NPDU of an answer.
    Octets Send(Answer const& answer) const;

private:
    Result ReceiveAsRouter(Npdu const& npdu, Indication indication) const;
    Octets RejectNetwork(Npdu const& npdu) const;

    std::optional<NetworkAddress> position;
};

}  // namespace simulator
