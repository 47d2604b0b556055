#pragma once

#include <string>
#include <vector>

#include "Device.h"

namespace simulator {

// Reads device files: Lua that describes devices and their objects. Both functions throw Mistake with the
// whole message in one line: "FILE:LINE: device NAME: OBJECT: PROPERTY: ...".

// All devices of the files. Two devices with one instance may be in different files. With `copies` above 1
// there must be exactly one device, of which that many are made (Copies.h).
std::vector<Device> LoadDeviceFiles(std::vector<std::string> const& paths, std::uint32_t copies = 1);
// `name` is the name of the file in messages.
std::vector<Device> ParseDeviceFile(std::string const& name, std::string const& text);

}  // namespace simulator
