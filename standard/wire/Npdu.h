#pragma once

#include <cstdint>
#include <optional>

#include "OctetVector.h"

namespace standard {

constexpr std::uint16_t GlobalBroadcast = 0xFFFF;

// A network number and a MAC address on that network; no MAC address stands for all of its stations.
struct NetworkAddress {
    std::uint16_t network = 0;
    Octets mac;
};

inline bool operator==(NetworkAddress const& left, NetworkAddress const& right) {
    return left.network == right.network && left.mac == right.mac;
}

// A network-layer protocol data unit (clause 6.2).
struct Npdu {
    bool isNetworkMessage = false;  // the content begins with a message type and is not an APDU
    bool expectsReply = false;
    std::uint8_t priority = 0;  // 0 normal to 3 life safety
    std::optional<NetworkAddress> destination;
    std::optional<NetworkAddress> source;
    std::uint8_t hopCount = 255;  // means something only if there is a destination
    Octets content;

    // Nothing if the octets are no NPDU of version 1 or break clause 6.2.2.
    static std::optional<Npdu> Decode(Octets const& octets);
    Octets Encode() const;
};

}  // namespace standard
