#pragma once

#include <cstdint>
#include <optional>
#include <string>

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
// An Original-Broadcast-NPDU (J.2.12).
Octets Broadcast(Octets const& npdu);
// A Forwarded-NPDU (J.2.5) of a BBMD for that originator.
Octets Forwarded(Endpoint const& originator, Octets const& npdu);

// Of a foreign device to a BBMD: Register-Foreign-Device (J.2.6) for so many seconds, and
// Distribute-Broadcast-To-Network (J.2.10).
Octets RegisterForeignDevice(std::uint16_t seconds);
Octets DistributeBroadcast(Octets const& npdu);

// The codes of a BVLC-Result (J.2.1).
enum ResultCode : std::uint16_t {
    Success = 0x0000,
    WriteTableNak = 0x0010,
    ReadTableNak = 0x0020,
    RegisterForeignDeviceNak = 0x0030,
    ReadForeignDevicesNak = 0x0040,
    DeleteForeignDeviceNak = 0x0050,
    DistributeBroadcastNak = 0x0060
};

// A BVLC-Result.
Octets ResultOf(std::uint16_t code);
// The code of a BVLC-Result. No value if the datagram is another one.
std::optional<std::uint16_t> ResultCodeOf(Octets const& datagram);
// "Register-Foreign-Device NAK", or "result code 0x0070".
std::string ResultText(std::uint16_t code);

// The seconds of a Register-Foreign-Device, and the NPDU of a Distribute-Broadcast-To-Network. No value if
// the datagram is another one.
std::optional<std::uint16_t> RegisteredSeconds(Octets const& datagram);
std::optional<Octets> DistributedNpdu(Octets const& datagram);

}  // namespace bvlc

}  // namespace standard
