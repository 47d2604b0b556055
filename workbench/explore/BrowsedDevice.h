#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "DeviceRecord.h"
#include "PatientReader.h"

namespace workbench {

// A device while it is read: the steps of DeviceBrowser, in the order in which they are to be called. A step
// after the device was given up does nothing.
class BrowsedDevice {
public:
    // The link and the settings must outlive the object.
    BrowsedDevice(standard::Link& network, standard::Peer const& peer, BrowseSettings const& browseSettings);

    // False if the device does not answer or cannot be identified.
    bool ReadIdentifier(std::optional<std::uint32_t> knownInstance);
    // The properties of the Device object.
    void ReadDevice();
    void ReadObjectList();
    // Their properties.
    void ReadObjects();
    // A note if objects were added or removed since ReadDevice.
    void CompareRevision();
    // Adds that object with all of its properties.
    void ReadObject(standard::ObjectId const& object);

    DeviceRecord TakeRecord();

private:
    using References = std::vector<standard::PropertyReference>;

    std::uint32_t AskInstance();
    void Take(standard::ReadResult result);
    void Incomplete(std::string note);
    void ReadPropertyLists();
    References ReferencesOf(std::vector<ObjectRecord> const& objects) const;
    std::vector<std::uint32_t> PropertiesOf(ObjectRecord const& object) const;
    void NoteMissing();
    void NoteCount(std::size_t count, char const* what);
    void ShowProgress(std::size_t objectsRead);

    BrowseSettings const& settings;
    standard::Link& link;
    PatientReader reader;
    DeviceRecord record;
};

}  // namespace workbench
