#include "StationTable.h"

#include <numeric>

#include "Bvlc.h"

namespace simulator {

StationTable::StationTable(std::vector<NetworkAddress> stations) : count(stations.size()) {
    for (std::size_t i = 0; i < count; ++i) {
        networks[stations[i].network].emplace(std::move(stations[i].mac), i);
    }
}

std::vector<std::size_t> StationTable::Receivers(Datagram const& datagram) const {
    std::vector<std::size_t> const router{0};
    auto const message = bvlc::Receive(datagram).message;
    auto const npdu = message ? Npdu::Decode(message->npdu) : std::nullopt;
    if (!npdu || npdu->isNetworkMessage || !npdu->destination) {
        return router;
    }
    if (npdu->destination->network == GlobalBroadcast) {
        std::vector<std::size_t> all(count);
        std::iota(all.begin(), all.end(), std::size_t{0});
        return all;
    }
    auto const network = networks.find(npdu->destination->network);
    if (network == networks.end()) {
        return router;
    }
    std::vector<std::size_t> receivers;
    for (auto const& [mac, index] : network->second) {
        if (npdu->destination->mac.empty()) {
            receivers.push_back(index);
        }
    }
    auto const station = network->second.find(npdu->destination->mac);
    if (station != network->second.end()) {
        receivers.push_back(station->second);
    }
    return receivers;
}

}  // namespace simulator
