#pragma once

#include <vector>

#include "Network/NDataUnitRequest.h"

namespace Network {

// The N-UNITDATA.indication (ASHRAE 135 clause 6.1).
struct NDataUnitIndication : NDataUnitRequest {
    bool hasSource = false;
    Address source;
    // The octets of the sender's VmacAddress.
    std::vector<char> physicalSource;
};

}  // namespace Network
