#pragma once

#include <vector>

namespace Network {

// A station on a remote network. Network 0 means that no remote network is addressed.
struct Address {
    // The MAC on the remote network; may be empty.
    std::vector<char> bytes;
    unsigned short network = 0;

    // Network number (2 octets), length of the MAC (1, its low eight bits), MAC: the DNET, DLEN, DADR or
    // SNET, SLEN, SADR of ASHRAE 135 clause 6.2.2.
    std::vector<char> GetBytes() const;
};

}  // namespace Network
