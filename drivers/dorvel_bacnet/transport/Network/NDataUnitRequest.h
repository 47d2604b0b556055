#pragma once

#include <cstdint>
#include <vector>

#include "Network/Address.h"

namespace Network {

// The N-UNITDATA.request (ASHRAE 135 clause 6.1).
struct NDataUnitRequest {
    // The APDU.
    std::vector<char> data;
    std::uint32_t priority = 0;
    bool expectingReply = false;
    // The message goes to a remote network.
    bool hasDestination = false;
    // The BACnet/IP MAC of the device, or of the router that leads to it.
    std::vector<char> physicalDestination;
    // Read only if hasDestination is set.
    Address destination;
};

// The NPDU of the request: the header, then the APDU. With a destination the hop count is 255. The header
// never has a source.
std::vector<char> ToNpdu(NDataUnitRequest const& request);

}  // namespace Network
