#pragma once

#include <vector>

#include "VmacAddress.h"

namespace VirtualDataLink {

// An NPDU that came, with its sender.
struct DuIndication {
    VmacAddress address{false};
    std::vector<char> data;
};

}  // namespace VirtualDataLink
