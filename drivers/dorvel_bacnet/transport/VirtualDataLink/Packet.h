#pragma once

#include <vector>

#include "VirtualDataLink/NetAddress.h"

namespace VirtualDataLink {

// One UDP datagram with its peer: the receiver of one that is sent, the sender of one that came.
struct Packet {
    NetAddress address;
    std::vector<char> data;
};

}  // namespace VirtualDataLink
