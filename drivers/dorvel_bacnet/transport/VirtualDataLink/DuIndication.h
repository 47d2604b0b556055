#pragma once

#include <vector>

#include "VmacAddress.h"

namespace VirtualDataLink {

// A received NPDU and its sender.
struct DuIndication {
    VmacAddress address{false};
    std::vector<char> data;
};

}  // namespace VirtualDataLink
