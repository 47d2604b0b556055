#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "DeviceRecord.h"

namespace workbench {

// One file of the simulator: a copy of a device. It has the values that were read, which do not move, and
// nothing of the device's address. A device that is read from the file gives the same file.
struct DeviceFile {
    std::string
        name;  // "AHU-1-1001.lua": without characters that a file system or a shell takes for something else
    std::string text;
    std::size_t objects = 0;
    // What the copy does not have, one line each.
    std::vector<std::string> leftOut;
};

// A file for each device that has answered, in their order. Devices behind one router have the same name of a
// router, "router-1" and so on by the lowest instance behind it.
std::vector<DeviceFile> WriteDeviceFiles(Inventory const& inventory);

}  // namespace workbench
