#pragma once

#include <cstdint>
#include <optional>

#include "OctetVector.h"

namespace standard {

constexpr std::uint16_t GlobalBroadcast = 0xFFFF;

// A network number and a MAC address on that network. An empty MAC address means all of its stations.
struct NetworkAddress {
    std::uint16_t network = 0;
    Octets mac;
};

inline bool operator==(NetworkAddress const& left, NetworkAddress const& right) {
    return left.network == right.network && left.mac == right.mac;
}

// A network-layer protocol data unit (clause 6.2).
struct Npdu {
    bool isNetworkMessage = false;  // the content is a message type and its parameters, not an APDU
    bool expectsReply = false;
    std::uint8_t priority = 0;  // 0 normal to 3 life safety
    std::optional<NetworkAddress> destination;
    std::optional<NetworkAddress> source;
    std::uint8_t hopCount = 255;  // used only with a destination
    Octets content;

    // No value if the octets are not an NPDU of version 1 or violate clause 6.2.2.
    static std::optional<Npdu> Decode(Octets const& octets);
    Octets Encode() const;
};

}  // namespace standard
