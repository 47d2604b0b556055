#pragma once

#include <optional>
#include <vector>

#include "VirtualDataLink/DuRequest.h"
#include "VirtualDataLink/Packet.h"

namespace VirtualDataLink {

// The frame around an NPDU: Original-Broadcast-NPDU or Original-Unicast-NPDU. The length field is cut to 16
// bits.
std::vector<char> FrameNpdu(bool isBroadcast, std::vector<char> npdu);

// The datagram that carries the request, framed by what its destination is.
Packet Frame(DuRequest request);

// The NPDU of a received datagram, or nothing when the frame has another function than the two above.
// Throws std::runtime_error: "packet format error" for fewer than four octets or another type than 0x81,
// "packet size error" when the length field is not the size of the datagram.
std::optional<std::vector<char>> Unframe(std::vector<char> datagram);

}  // namespace VirtualDataLink
