#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "BrowseSettings.h"
#include "DeviceRecord.h"
#include "Link.h"

namespace workbench {

// Reads devices and their objects: the object list whole, in segments or element by element, the properties
// with ReadPropertyMultiple, or one by one where a device does not know it. Writes nothing. No function
// throws; each ends in bounded time, whatever the device sends. For use by one thread.
class DeviceBrowser {
public:
    // The link must outlive the browser. Once it is stopped, a record has what was read before.
    DeviceBrowser(standard::Link& network, BrowseSettings browseSettings);

    // The device with its objects. Of a device that stops answering, of one whose object list cannot be read
    // whole, and when the link is stopped, the record has what was read, is not complete, and a note states
    // the reason. A device that never answers has the instance 4194303 and no properties. `instance` is that
    // of the device, if it is known: some devices do not know the instance 4194303, by which any Device
    // object is read.
    DeviceRecord Browse(standard::Peer const& peer, std::optional<std::uint32_t> instance = {});

    // All properties of one object, whatever the detail of the settings.
    struct OneObject {
        ObjectRecord object;
        bool isComplete = true;
        std::vector<std::string> notes;
    };
    OneObject BrowseObject(standard::Peer const& peer, standard::ObjectId const& object);

private:
    standard::Link& link;
    BrowseSettings settings;
};

}  // namespace workbench
