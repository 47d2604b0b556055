#pragma once

#include <cstdint>
#include <vector>

#include "Device.h"

namespace simulator {

// The device and copies of it, `count` devices in all. The n-th one has "-n" after the name, from the second
// on, and the instance, the port and the address behind a router that follow those of the one before; a
// router's port is shared. Throws Mistake where there are not enough of these.
std::vector<Device> WithCopies(Device const& device, std::uint32_t count);

}  // namespace simulator
