#pragma once

#include <optional>

#include "Endpoint.h"

namespace standard {

// BACnet Virtual Link Control of BACnet/IP (Annex J): the header before every NPDU.
namespace bvlc {

// A received NPDU.
struct Message {
    Endpoint source;   // the receiver of the answer: the sender, or the originator that a BBMD names
    bool isBroadcast;  // a confirmed request in it must not be answered
    Octets npdu;
};

// The content of a datagram: an NPDU, or a request with its answer. Neither if the datagram is to be dropped.
struct Result {
    std::optional<Message> message;
    std::optional<Octets> answer;  // a complete datagram for the sender
};

// Annex J.2. A datagram with a wrong length field is dropped. The answer to a request to a BBMD is the
// BVLC-Result NAK that the clause of the request states, as this device is not a BBMD.
Result Receive(Datagram const& datagram);

// An Original-Unicast-NPDU (J.2.11).
Octets Unicast(Octets const& npdu);

}  // namespace bvlc

}  // namespace standard
