#include "DiscoveryResult.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <tuple>

namespace standard {

namespace {

auto Order(Peer const& peer) {
    NetworkAddress const remote = peer.remote.value_or(NetworkAddress());
    return std::make_tuple(remote.network, remote.mac.size(), remote.mac, peer.endpoint);
}

}  // namespace

bool IsBefore(Peer const& left, Peer const& right) {
    return Order(left) < Order(right);
}

bool IsSameStation(Peer const& left, Peer const& right) {
    return left.remote && left.remote == right.remote;
}

std::map<std::uint32_t, std::vector<std::size_t>> DiscoveryResult::RepeatedInstances() const {
    std::map<std::uint32_t, std::vector<std::size_t>> repeated;
    for (std::size_t i = 0; i < devices.size(); ++i) {
        repeated[devices[i].Instance()].push_back(i);
    }
    for (auto at = repeated.begin(); at != repeated.end();) {
        at = at->second.size() > 1 ? std::next(at) : repeated.erase(at);
    }
    return repeated;
}

std::vector<std::vector<std::size_t>> DiscoveryResult::SharedAddresses() const {
    std::vector<std::size_t> byAddress(devices.size());
    std::iota(byAddress.begin(), byAddress.end(), std::size_t{0});
    std::stable_sort(byAddress.begin(), byAddress.end(), [this](std::size_t left, std::size_t right) {
        return IsBefore(devices[left].peer, devices[right].peer);
    });
    std::vector<std::vector<std::size_t>> shared;
    for (std::size_t i = 0, end = 0; i < byAddress.size(); i = end) {
        while (end < byAddress.size() && devices[byAddress[end]].peer == devices[byAddress[i]].peer) {
            ++end;
        }
        if (end - i > 1) {
            shared.emplace_back(byAddress.begin() + static_cast<std::ptrdiff_t>(i),
                                byAddress.begin() + static_cast<std::ptrdiff_t>(end));
        }
    }
    std::sort(shared.begin(), shared.end());
    return shared;
}

}  // namespace standard
