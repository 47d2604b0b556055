#pragma once

#include <vector>

#include "VirtualDataLink/NetAddress.h"

namespace VirtualDataLink {

// No poll uses this record: the device client passes its octets to the socket of the host. It is one UDP
// datagram with its peer: the receiver of a sent one, the sender of a received one.
struct Packet {
    NetAddress address;
    std::vector<char> data;
};

}  // namespace VirtualDataLink
