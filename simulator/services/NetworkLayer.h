#pragma once

#include <optional>

#include "Device.h"
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
        bool isForAll = false;         // the answer may be broadcast too
    };

    // `devicePosition` is the address of a device behind a router. Its MAC address must not be empty.
    // `deviceRouter` describes the router; its own network has the lowest number that it does not lead to,
    // unless it states another one.
    explicit NetworkLayer(std::optional<NetworkAddress> devicePosition, RouterSettings deviceRouter = {});

    // `isBroadcast` is true for an NPDU from a broadcast of the link.
    Result Receive(Endpoint const& sender, bool isBroadcast, Octets const& octets) const;
    // The NPDU of an answer.
    Octets Send(Answer const& answer) const;

private:
    Result ReceiveAsRouter(Npdu const& npdu, Indication indication) const;
    Result ReceiveMessage(Npdu const& npdu) const;
    bool LeadsTo(std::uint16_t network) const;
    Octets RejectNetwork(Npdu const& npdu) const;

    std::optional<NetworkAddress> position;
    RouterSettings router;
};

}  // namespace simulator
