#include "DeviceBrowser.h"

#include "BrowsedDevice.h"

namespace workbench {

DeviceBrowser::DeviceBrowser(standard::Link& network, BrowseSettings browseSettings)
    : link(network), settings(std::move(browseSettings)) {}

DeviceRecord DeviceBrowser::Browse(standard::Peer const& peer, std::optional<std::uint32_t> instance) {
    BrowsedDevice device(link, peer, settings);
    if (device.ReadIdentifier(instance)) {
        device.ReadDevice();
        if (settings.hasObjects) {
            device.ReadObjectList();
            device.ReadObjects();
            device.CompareRevision();
        }
    }
    return device.TakeRecord();
}

DeviceBrowser::OneObject DeviceBrowser::BrowseObject(standard::Peer const& peer,
                                                     standard::ObjectId const& object) {
    BrowseSettings whole = settings;
    whole.detail = Detail::Every;
    BrowsedDevice device(link, peer, whole);
    device.ReadObject(object);
    DeviceRecord record = device.TakeRecord();
    return {std::move(record.objects.front()), record.isComplete, std::move(record.notes)};
}

}  // namespace workbench
