#pragma once

#include <vector>

#include "Network/NDataUnitRequest.h"

namespace Network {

// The N-UNITDATA.indication (ASHRAE 135 clause 6.1). Only Layer::Receive makes it, so no poll does.
struct NDataUnitIndication : NDataUnitRequest {
    bool hasSource = false;
    Address source;
    // The BACnet/IP MAC of the sender.
    std::vector<char> physicalSource;
};

}  // namespace Network
