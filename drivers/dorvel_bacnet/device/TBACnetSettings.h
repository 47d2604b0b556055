#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Network/Address.h"

namespace dorvel::BACnet {

// Room for what a device may be given beyond its settings. Nothing derives from it yet.
struct SettingsExtension {
    virtual ~SettingsExtension() = default;
};

// Addressing and limits of one device. Numbers are those of the block's fields, cut to the width given here.
// Fields that are said to be stored only are read by nothing: the record keeps what the block was given.
struct TBACnetSettings {
    std::int32_t addressNumber = 0;   // stored only
    std::string reservedText;         // stays empty
    std::uint16_t networkNumber = 0;  // stored only: remoteAddress has the one that counts
    std::string reservedText2;        // stays empty
    // The device behind a router. Network 0 means that the device is on the local network.
    Network::Address remoteAddress;
    // The octets of the BACnet/IP address to which frames go: the device, or the router before it.
    std::vector<char> linkAddress;
    // The constructor of the device client came to its end; without that the block refuses to poll.
    bool created = false;
    // Stored only: the wait for an answer is always TBACnet::ReceiveTimeout.
    std::uint16_t timeout = 0;
    // Attempts per object, and what one failed object takes from the error budget.
    std::uint16_t repeatCount = 0;
    std::uint16_t repeatCountCopy = 0;  // stored only
    // The error budget of a cycle.
    std::uint16_t errorLimit = 0;
    // The invoke id of the latest read request, an unsigned octet that wraps.
    char ReadInvokeId = 0;
    std::unique_ptr<SettingsExtension> extension;  // stays null
    // Priority of writes, of ASHRAE 135 clause 19.2.
    std::int32_t priority = 0;
};

}  // namespace dorvel::BACnet
