#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "BrowseSettings.h"
#include "DeviceRecord.h"

namespace workbench {

// A device to be read; with its instance, if that is known.
struct BrowseTarget {
    standard::Peer peer;
    std::optional<std::uint32_t> instance = {};
};

// Reads several devices of the network over UDP, some at the same time: one request at a time for each
// device, and for each router. `isStopped` is asked from several threads. `progress` gets a line such as "3
// of 12 devices, 192.168.1.20:47808: 120 of 500 objects", from one thread at a time. The records are in the
// order of the targets. Throws std::system_error without a socket.
std::vector<DeviceRecord> BrowsePlant(std::vector<BrowseTarget> const& targets,
                                      BrowseSettings const& settings, std::function<bool()> const& isStopped,
                                      std::function<void(std::string const&)> const& progress);

// In the order of Inventory: by instance, those with the same one by address.
Inventory InventoryOf(std::vector<DeviceRecord> records);

}  // namespace workbench
