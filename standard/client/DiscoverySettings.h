#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Endpoint.h"
#include "UnconfirmedServices.h"

namespace standard {

// Who is asked, and how long.
struct DiscoverySettings {
    enum class Way {
        Broadcast,     // `target` is a broadcast address: of the local subnet, or directed to another one
        Unicast,       // `target` is a device or a router
        ForeignDevice  // `target` is a BBMD, which distributes the questions after a registration
    };
    Way way = Way::Broadcast;
    Endpoint target;
    std::optional<InstanceRange> range;
    // Also asks for routers, and the devices of the networks that they name.
    bool asksRouters = true;
    // Networks whose devices are asked, whether a router names them or not.
    std::vector<std::uint16_t> networks = {};

    // The time that is listened after the last question.
    std::chrono::milliseconds timeout{3000};
    // The questions are asked so many times, at least once, with this time between the rounds.
    unsigned rounds = 2;
    std::chrono::milliseconds interval{1000};
    // The time between the questions to different networks.
    std::chrono::milliseconds spacing{50};
    // The wait for the answer of a BBMD, and the attempts.
    std::chrono::milliseconds registrationTimeout{2000};
    unsigned registrationAttempts = 3;

    // Limits, whatever is on the network.
    std::chrono::milliseconds longest{120000};
    std::size_t mostDatagrams = 1000000;
    std::size_t mostDevices = 100000;
    std::size_t mostNetworks = 500;
};

}  // namespace standard
