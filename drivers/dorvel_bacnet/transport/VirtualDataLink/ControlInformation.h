#pragma once

#include <array>
#include <vector>

namespace VirtualDataLink {

// The first octet of every BVLC frame.
constexpr unsigned char BvlcType = 0x81;

// The BVLC functions that carry an NPDU and that the driver knows (ASHRAE 135 Annex J.2).
constexpr unsigned char OriginalUnicastNpdu = 0x0A;
constexpr unsigned char OriginalBroadcastNpdu = 0x0B;

// The size of the BVLC header in octets.
constexpr int HeaderSize = 4;

// The BVLC header. The caller sets both fields before GetBytes.
struct ControlInformation {
    unsigned char function = 0;
    // The size of the whole frame in octets, including this header.
    unsigned short length = 0;

    // The four octets of the header. Departure from Annex J.2: the third octet has bits 8 to 11 of the length
    // in its upper half, so 0x0104 goes out as 10 04. Installed systems rely on this. Unframe reads the
    // length as the standard has it.
    std::vector<char> GetBytes() const;
    // The same without an allocation.
    std::array<char, HeaderSize> Octets() const;
};

}  // namespace VirtualDataLink
