#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ObjectRecord.h"
#include "Peer.h"

namespace workbench {

// A device and its objects.
struct DeviceRecord {
    // Its address; not known of a device from a list of points.
    std::optional<standard::Peer> peer;
    // The Device object: its identifier, and the properties that are known.
    ObjectRecord device;
    // In the order of its Object_List, without the Device object.
    std::vector<ObjectRecord> objects;
    // False if something of it could not be read: it stopped answering, or the reading was ended.
    bool isComplete = true;
    // What a user has to know of it, one sentence each.
    std::vector<std::string> notes;

    std::uint32_t Instance() const { return device.id.instance; }
};

// A plant: its devices in the order of their instances, those with the same one in that of their addresses.
struct Inventory {
    std::vector<DeviceRecord> devices;
};

}  // namespace workbench
