#pragma once

#include <string>
#include <vector>

#include "Device.h"

namespace simulator {

// Reads device files: Lua that describes devices and their objects. Both functions throw Mistake with the
// whole message in one line: "FILE:LINE: device NAME: OBJECT: PROPERTY: ...".

std::vector<Device> LoadDeviceFile(std::string const& path);
// `name` is the name of the file in messages.
std::vector<Device> ParseDeviceFile(std::string const& name, std::string const& text);

}  // namespace simulator
