#pragma once

#include <vector>

#include "Device.h"

namespace simulator {

// Completes the routers of all devices of the program: devices whose routers have one name share the router,
// which leads to the networks of all of them. The IP network has the number that a device states, otherwise
// the lowest one that none of the routers leads to. Throws Mistake for two devices with one address, and
// for two statements about one router that differ.
void SettleRouters(std::vector<Device>& devices);

}  // namespace simulator
