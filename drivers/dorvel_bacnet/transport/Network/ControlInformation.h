#pragma once

#include <cstdint>
#include <vector>

#include "Network/Address.h"

namespace Network {

// The NPCI, the header of an NPDU (ASHRAE 135 clause 6.2).
struct ControlInformation {
    // Departure from ASHRAE 135 clause 6.2.2, which has two bits: the low octet goes into the control octet
    // unmasked. The driver sends 0.
    std::uint32_t priority = 0;
    bool isNetworkMessage = false;
    bool hasDestination = false;
    bool hasSource = false;
    bool expectingReply = false;
    Address destination;
    Address source;
    unsigned char hopCount = 0;
    // A parse sets both when they are present; GetBytes never writes them. Departure from clause 6.2: the
    // vendor identifier is one octet here, two in the standard.
    unsigned char messageType = 0;
    unsigned char vendor = 0;

    // Version and control octet; the destination and the source if their flags are set; the hop count if
    // there is a destination.
    std::vector<char> GetBytes() const;
};

// Bits of the control octet.
constexpr unsigned char NetworkMessageBit = 0x80;
constexpr unsigned char DestinationBit = 0x20;
constexpr unsigned char SourceBit = 0x08;
constexpr unsigned char ExpectingReplyBit = 0x04;

// The only version of the protocol.
constexpr unsigned char ProtocolVersion = 1;

}  // namespace Network
