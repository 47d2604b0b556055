#pragma once

#include <string>
#include <vector>

#include "Device.h"

namespace simulator {

// Device files: Lua that describes devices and their objects. Both throw Mistake with the whole message,
// "FILE:LINE: device NAME: OBJECT: PROPERTY: ...", in one line.

std::vector<Device> LoadDeviceFile(std::string const& path);
// `name` is what messages call the file.
std::vector<Device> ParseDeviceFile(std::string const& name, std::string const& text);

}  // namespace simulator
