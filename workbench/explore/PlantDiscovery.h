#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "AddressArgument.h"
#include "BrowseSettings.h"
#include "DeviceRecord.h"
#include "DiscoveryResult.h"

namespace workbench {

struct DiscoverySettings {
    // Names or addresses of interfaces; empty for each one of the machine, and loopback only if there is no
    // other.
    std::vector<std::string> interfaces;
    // Asks only these in place of a broadcast on the interfaces: devices, directed broadcast addresses, and
    // with a network the stations behind a router.
    std::vector<standard::Peer> addresses;
    // Devices with an instance in this range only, both ends included.
    std::optional<std::pair<std::uint32_t, std::uint32_t>> range;
    // Registers there as a foreign device, to reach the networks of that BBMD.
    std::optional<standard::Endpoint> bbmd;
    std::uint16_t port = DefaultPort;
    // How long devices may take to answer the last Who-Is.
    std::chrono::milliseconds wait{3000};
    // How each device that was found is asked for its name, model and vendor.
    BrowseSettings reading;
    std::function<bool()> isStopped = [] { return false; };
    // Gets one line, such as "4 devices, 2 networks".
    std::function<void(std::string const&)> progress = [](std::string const&) {};
};

// What is wrong with a device that was found.
enum class DiscoveryMark {
    SameInstance,   // another device has its instance
    AnswersTwice,   // it is found in several ways, or answers more often than it was asked
    SharedAddress,  // other devices answer from its address
    NotReadable,    // its Device object cannot be read at the address from which it announces itself
    OtherInstance,  // its Device object has another instance than it announces
    NoInstance,     // it announces the instance 4194303, which is none
    Contradicts     // it announces itself with different properties
};
// "same-instance"
char const* NameOf(DiscoveryMark mark);

struct MarkedDevice {
    // With its address, and of its Device object what the I-Am states and what could be read.
    DeviceRecord record;
    std::uint32_t announced = 0;  // the instance of the I-Am
    // Each with a text for people: "instance 1001 is also at 192.168.1.21:47808".
    std::vector<std::pair<DiscoveryMark, std::string>> marks;
};

struct DiscoveredPlant {
    // By instance, those with the same one by address.
    std::vector<MarkedDevice> devices;
    // Routers and the networks that they name.
    std::vector<standard::FoundRouter> routers;
    // What a user has to know besides, one sentence each: an interface that cannot be used, a router that
    // does not answer, a port that another program holds alone.
    std::vector<std::string> notes;
    bool isStopped = false;  // before its end
};

// Nothing can be asked: no such interface, no socket, or the BBMD does not register this program.
class DiscoveryFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Throws DiscoveryFailure. Asks several interfaces at the same time.
DiscoveredPlant DiscoverPlant(DiscoverySettings const& settings);

// What the answers of several interfaces are together: each address and instance once, with its marks, before
// the devices are read.
DiscoveredPlant PlantOf(std::vector<standard::DiscoveryResult> const& results);
// Adds what was read of each device, in their order. Without properties it is marked.
void TakeRecords(DiscoveredPlant& plant, std::vector<DeviceRecord> records);

}  // namespace workbench
