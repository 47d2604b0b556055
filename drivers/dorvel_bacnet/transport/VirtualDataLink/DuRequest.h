#pragma once

#include <vector>

#include "VmacAddress.h"

namespace VirtualDataLink {

// An NPDU on its way out, with its destination.
struct DuRequest {
    VmacAddress address{false};
    std::vector<char> data;
};

}  // namespace VirtualDataLink
