#pragma once

#include <vector>

namespace Network {

// A station on a remote network. Network 0 means the local network.
struct Address {
    // The MAC on the remote network; may be empty.
    std::vector<char> bytes;
    unsigned short network = 0;

    // Network number (2 octets), length of the MAC (1 octet, the low eight bits of its size) and MAC. These
    // are DNET, DLEN, DADR or SNET, SLEN, SADR of ASHRAE 135 clause 6.2.2.
    std::vector<char> GetBytes() const;
};

}  // namespace Network
