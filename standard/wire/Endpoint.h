#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "OctetVector.h"

namespace standard {

// An IPv4 address and a UDP port, both in host byte order.
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

// A datagram. `peer` is its sender if it was received, otherwise its receiver.
struct Datagram {
    Endpoint peer;
    Octets octets;
};

}  // namespace standard
