#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "Endpoint.h"
#include "Npdu.h"
#include "Standard.h"

namespace simulator {

// Finds the stations behind one router that a datagram is for, so that each is not asked about each datagram.
class StationTable {
public:
    // In the order of the stations, of which there is at least one. No two may be equal.
    explicit StationTable(std::vector<NetworkAddress> stations);

    // Indices of stations: one, all of a network, or all. What is for none of them is for the first one,
    // which answers for the router: messages of the link and of the network layer, and unknown destinations.
    std::vector<std::size_t> Receivers(Datagram const& datagram) const;

private:
    std::map<std::uint16_t, std::map<Octets, std::size_t>> networks;
    std::size_t count;
};

}  // namespace simulator
