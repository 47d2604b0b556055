#pragma once

#include <vector>

#include "VmacAddress.h"

namespace VirtualDataLink {

// An NPDU to be sent and its destination.
struct DuRequest {
    VmacAddress address{false};
    std::vector<char> data;
};

}  // namespace VirtualDataLink
