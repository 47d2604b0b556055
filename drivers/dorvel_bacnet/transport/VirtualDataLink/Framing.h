#pragma once

#include <optional>
#include <vector>

#include "VirtualDataLink/DuRequest.h"
#include "VirtualDataLink/Packet.h"

namespace VirtualDataLink {

// An NPDU in an Original-Broadcast-NPDU or Original-Unicast-NPDU frame. The length field holds the low 16
// bits of the size.
std::vector<char> FrameNpdu(bool isBroadcast, std::vector<char> npdu);

// The request as a datagram: a broadcast or a unicast frame, as the flag of its destination says. Only Layer
// uses it.
Packet Frame(DuRequest request);

// The NPDU of a received datagram, or nothing when the frame has another function than the two above. Throws
// std::runtime_error "packet format error" for fewer than four octets or a type other than 0x81, and "packet
// size error" when the length field is not the size of the datagram.
std::optional<std::vector<char>> Unframe(std::vector<char> datagram);

}  // namespace VirtualDataLink
