#pragma once

#include <cstdint>
#include <vector>

#include "Network/Address.h"

namespace Network {

// The NPCI, the header of an NPDU (ASHRAE 135 clause 6.2).
struct ControlInformation {
    // Only the low octet is used, and it goes into the control octet unmasked.
    std::uint32_t priority = 0;
    bool isNetworkMessage = false;
    bool hasDestination = false;
    bool hasSource = false;
    bool expectingReply = false;
    Address destination;
    Address source;
    unsigned char hopCount = 0;
    // Both are set by a parse that found them and are never written. The vendor identifier of the standard
    // has two octets; this system takes one.
    unsigned char messageType = 0;
    unsigned char vendor = 0;

    // Version and control octet, then destination and source as far as their flags are set, then the hop
    // count if there is a destination.
    std::vector<char> GetBytes() const;
};

// Bits of the control octet.
constexpr unsigned char NetworkMessageBit = 0x80;
constexpr unsigned char DestinationBit = 0x20;
constexpr unsigned char SourceBit = 0x08;
constexpr unsigned char ExpectingReplyBit = 0x04;

// The one version of the protocol.
constexpr unsigned char ProtocolVersion = 1;

}  // namespace Network
