#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "OctetVector.h"

namespace standard {

// An IPv4 address and a UDP port, both in the machine's own byte order.
struct Endpoint {
    std::uint32_t address = 0;
    std::uint16_t port = 0;

    // As "127.0.0.1:47808".
    std::string Text() const;
};

inline bool operator==(Endpoint const& left, Endpoint const& right) {
    return left.address == right.address && left.port == right.port;
}
inline bool operator<(Endpoint const& left, Endpoint const& right) {
    return std::tie(left.address, left.port) < std::tie(right.address, right.port);
}

// A datagram on its way: `peer` is who sent it or who is to get it.
struct Datagram {
    Endpoint peer;
    Octets octets;
};

}  // namespace standard
