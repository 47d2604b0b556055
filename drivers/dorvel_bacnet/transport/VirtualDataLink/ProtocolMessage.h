#pragma once

#include <vector>

#include "VirtualDataLink/ControlInformation.h"

namespace VirtualDataLink {

// A BVLC frame: the header and the NPDU. The driver makes no such record, as FrameNpdu puts the header in
// front of the NPDU in its buffer.
struct ProtocolMessage {
    ControlInformation controlInformation;
    std::vector<char> data;

    // The header followed by the data.
    std::vector<char> GetBytes() const;
};

}  // namespace VirtualDataLink
