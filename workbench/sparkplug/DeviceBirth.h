#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "DeviceMetrics.h"
#include "SparkplugNames.h"

namespace workbench {

// The birth of a device: all variables of its block.
struct DeviceBirth {
    // Octets. A birth that would be longer says less (BirthDetail); with the least detail it is what its
    // metrics take, about 60 octets and the name of each variable and LongestBirthValue at most.
    static constexpr std::size_t LongestWhole = 1 << 20;

    std::string payload;
    std::vector<std::size_t> leftOut;  // the variables whose values it does not have
};

// The head has time and number, and no metrics.
DeviceBirth MakeDeviceBirth(BlockSnapshot const& block, std::size_t index, SparkplugNames const& names,
                            bool takesCommands, SparkplugPayload head);

}  // namespace workbench
