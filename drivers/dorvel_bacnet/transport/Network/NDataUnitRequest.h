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
    // The message has to go to a remote network.
    bool hasDestination = false;
    // The octets of the VmacAddress of the device, or of the router that leads to it.
    std::vector<char> physicalDestination;
    // Read only if hasDestination is set.
    Address destination;
};

// The NPDU of the request: the header, with a hop count of 255 where there is a destination and never with
// a source, then the APDU.
std::vector<char> ToNpdu(NDataUnitRequest const& request);

}  // namespace Network
