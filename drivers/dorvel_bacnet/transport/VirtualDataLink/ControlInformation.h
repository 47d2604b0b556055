#pragma once

#include <vector>

namespace VirtualDataLink {

// The first octet of every BVLC frame.
constexpr unsigned char BvlcType = 0x81;

// The BVLC functions that carry an NPDU and that this system knows (ASHRAE 135 Annex J.2).
constexpr unsigned char OriginalUnicastNpdu = 0x0A;
constexpr unsigned char OriginalBroadcastNpdu = 0x0B;

// The size of the BVLC header.
constexpr int HeaderSize = 4;

// The BVLC header. Both fields are to be set before GetBytes.
struct ControlInformation {
    unsigned char function = 0;
    // Octets of the whole frame, this header included.
    unsigned short length = 0;

    // The four octets of the header. The length is not written as Annex J has it: the third octet holds
    // bits 8 to 11 in its upper half, so that 0x0104 goes out as 10 04. Installed devices know this sender
    // by it; reading is not concerned.
    std::vector<char> GetBytes() const;
};

}  // namespace VirtualDataLink
