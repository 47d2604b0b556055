#pragma once

#include <optional>

#include "Endpoint.h"

namespace standard {

// BACnet Virtual Link Control of BACnet/IP (Annex J): what stands in front of every NPDU.
namespace bvlc {

// An NPDU that came in.
struct Message {
    Endpoint source;   // whom to answer: the sender, or the originator that a BBMD names
    bool isBroadcast;  // was sent to all, so a confirmed request in it is not to be served
    Octets npdu;
};

// What a datagram asks for: either of the two, or nothing at all if it is to be dropped.
struct Result {
    std::optional<Message> message;
    std::optional<Octets> answer;  // a complete datagram for the sender
};

// Annex J.2. A datagram whose length field is not its length is dropped. Requests to a BBMD, which this
// device is not, are answered with the BVLC-Result NAK that their clause states.
Result Receive(Datagram const& datagram);

// An Original-Unicast-NPDU (J.2.11).
Octets Unicast(Octets const& npdu);

}  // namespace bvlc

}  // namespace standard
