#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "BacnetObject.h"
#include "Fault.h"
#include "Npdu.h"
#include "Standard.h"

namespace simulator {

// The router to the network of a device.
struct RouterSettings {
    std::string name;                         // devices with the same one are behind one router; or empty
    std::vector<std::uint16_t> networks;      // all those that it leads to
    std::optional<std::uint16_t> ownNetwork;  // the number of the IP network
};

// The settings of a device for its exchanges.
struct DeviceSettings {
    std::uint32_t maxApduLength = 1476;  // octets, 50 to 1476
    bool segmentsAnswers = true;
    std::uint32_t maxSegments = 0;         // of one answer; 0 for no limit
    std::uint8_t proposedWindowSize = 16;  // 1 to 127
    std::chrono::milliseconds segmentTimeout{2000};
    std::uint32_t retries = 3;
    std::uint32_t vendorIdentifier = 0;
    bool isLenient = false;                  // accepts values of wrong datatypes too (WrittenValue.h)
    std::uint8_t segmentationSupported = 0;  // BACnetSegmentation, as I-Am reports it
    std::optional<NetworkAddress> position;  // the address behind a router, if there is one
    RouterSettings router;                   // of a device with a position
    bool broadcastsAnswers = false;          // those to Who-Is, Who-Has and about networks
    std::optional<std::uint16_t> port;       // the UDP port that the device file states
    std::vector<Fault> faults;               // for FaultyStation; a Station has none
};

// A BACnet device: its objects, of which the first is the Device object, and its settings.
class Device {
public:
    // `deviceObject` has the name and the instance of the device. No two objects may have the same
    // identifier. Object_List and Protocol_Object_Types_Supported derive from the objects, unless the device
    // object has them already.
    Device(BacnetObject deviceObject, std::vector<BacnetObject> otherObjects, DeviceSettings deviceSettings);

    // The same device with another name and instance.
    Device Copy(std::uint32_t instance, std::string const& name, DeviceSettings otherSettings) const;

    std::string const& Name() const { return objects.front().Name(); }
    ObjectId Id() const { return objects.front().Id(); }
    DeviceSettings const& Settings() const { return settings; }
    void SetRouter(RouterSettings router) { settings.router = std::move(router); }
    void SetPort(std::optional<std::uint16_t> port) { settings.port = port; }
    std::vector<BacnetObject> const& Objects() const { return objects; }
    // Null if the device does not have the object. Instance 4194303 of a Device object is this device (clause
    // 12.11).
    BacnetObject const* Find(ObjectId id) const;
    BacnetObject* Find(ObjectId id);

    // Takes the last object from Object_List, or puts it back, and counts Database_Revision up.
    void ChangeObjectList();

    // The receiver of one line of text for each write.
    using WriteObserver = std::function<void(std::string const&)>;
    void OnWrite(WriteObserver observer) { onWrite = std::move(observer); }
    WriteObserver const& GetWriteObserver() const { return onWrite; }

private:
    void AddToDevice(Property property);

    std::vector<BacnetObject> objects;
    std::map<ObjectId, std::size_t> places;
    DeviceSettings settings;
    ValuePtr unlisted;  // what ChangeObjectList has taken
    WriteObserver onWrite;
};

}  // namespace simulator
