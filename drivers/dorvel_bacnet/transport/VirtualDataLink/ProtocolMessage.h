#pragma once

#include <vector>

#include "VirtualDataLink/ControlInformation.h"

namespace VirtualDataLink {

// No poll uses this record: FrameNpdu puts the header in front of the NPDU without a copy. It is a BVLC
// frame, the header and the NPDU.
struct ProtocolMessage {
    ControlInformation controlInformation;
    std::vector<char> data;

    // The header followed by the data.
    std::vector<char> GetBytes() const;
};

}  // namespace VirtualDataLink
