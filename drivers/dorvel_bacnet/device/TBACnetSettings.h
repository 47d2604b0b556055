#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Network/Address.h"

namespace dorvel::BACnet {

// A base for settings of a device beyond those below. No class derives from it.
struct SettingsExtension {
    virtual ~SettingsExtension() = default;
};

// Address and limits of one device. The numbers are those of the fields of the block, cut to the width given
// here. Nothing reads the fields marked "stored only"; they hold what the block was given.
struct TBACnetSettings {
    std::int32_t addressNumber = 0;   // stored only
    std::string reservedText;         // always empty
    std::uint16_t networkNumber = 0;  // stored only: remoteAddress has the one in use
    std::string reservedText2;        // always empty
    // The device behind a router. Network 0 means that the device is on the local network.
    Network::Address remoteAddress;
    // The BACnet/IP address of the device, or of the router that leads to it. Frames go to the peer of
    // TBACnet.
    std::vector<char> linkAddress;
    // The constructor of the device client succeeded; otherwise the block does not poll.
    bool created = false;
    // Milliseconds, stored only: the wait for an answer is always TBACnet::ReceiveTimeout.
    std::uint16_t timeout = 0;
    // Attempts per object; also what a failed object takes from the error budget.
    std::uint16_t repeatCount = 0;
    std::uint16_t repeatCountCopy = 0;  // stored only
    // The error budget of a poll.
    std::uint16_t errorLimit = 0;
    // The invoke id of the latest read request, an unsigned octet that wraps around.
    char ReadInvokeId = 0;
    std::unique_ptr<SettingsExtension> extension;  // always null
    // Priority of writes (ASHRAE 135 clause 19.2): 1 to 16; any other number sends none.
    std::int32_t priority = 0;
};

}  // namespace dorvel::BACnet
