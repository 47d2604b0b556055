#include "Routers.h"

#include <algorithm>
#include <map>
#include <set>

#include "HexText.h"
#include "Mistake.h"
#include "Printable.h"

namespace simulator {

namespace {

using Stations = std::map<std::pair<std::uint16_t, Octets>, std::string>;

// A router with a name, and what its devices state about it.
struct Router {
    std::vector<std::uint16_t> networks;
    Stations stations;  // with the names of the devices
    std::optional<std::uint16_t> ownNetwork;
    std::optional<std::uint16_t> port;
};

[[noreturn]] void Fail(Device const& device, std::string const& text) {
    throw Mistake("device " + device.Name() + ": router: " + text);
}

std::string InQuotes(Device const& device) {
    return tools::Quoted(device.Settings().router.name);
}

template <class Number>
void Agree(Device const& device, char const* name, std::optional<Number>& known,
           std::optional<Number> const& stated) {
    if (known && stated && *known != *stated) {
        Fail(device, InQuotes(device) + " has " + name + ' ' + std::to_string(*known) +
                         " by another device, not " + std::to_string(*stated));
    }
    known = known ? known : stated;
}

void AddStation(Router& router, Device const& device) {
    NetworkAddress const& position = *device.Settings().position;
    auto const [station, isNew] =
        router.stations.emplace(std::pair(position.network, position.mac), device.Name());
    if (!isNew) {
        Fail(device, "device " + station->second + " has the mac " +
                         tools::Quoted(tools::HexText(position.mac, tools::HexDigits::Upper)) +
                         " on network " + std::to_string(position.network) + " of " + InQuotes(device));
    }
    if (std::find(router.networks.begin(), router.networks.end(), position.network) ==
        router.networks.end()) {
        router.networks.push_back(position.network);
    }
    Agree(device, "own_network", router.ownNetwork, device.Settings().router.ownNetwork);
    Agree(device, "port", router.port, device.Settings().port);
}

std::uint16_t LowestFree(std::set<std::uint16_t> const& networks) {
    std::uint16_t number = 1;
    while (networks.count(number) != 0) {
        ++number;
    }
    return number;
}

}  // namespace

void SettleRouters(std::vector<Device>& devices) {
    std::map<std::string, Router> routers;
    std::set<std::uint16_t> networks;
    for (Device const& device : devices) {
        if (device.Settings().position) {
            networks.insert(device.Settings().position->network);
            if (!device.Settings().router.name.empty()) {
                AddStation(routers[device.Settings().router.name], device);
            }
        }
    }
    for (Device& device : devices) {
        if (!device.Settings().position) {
            continue;
        }
        RouterSettings settings = device.Settings().router;
        auto const shared = routers.find(settings.name);
        if (shared != routers.end()) {
            settings.networks = shared->second.networks;
            settings.ownNetwork = shared->second.ownNetwork;
            device.SetPort(shared->second.port);
        } else {
            settings.networks = {device.Settings().position->network};
        }
        settings.ownNetwork = settings.ownNetwork.value_or(LowestFree(networks));
        auto const& own = settings.networks;
        if (std::find(own.begin(), own.end(), *settings.ownNetwork) != own.end()) {
            Fail(device, "own_network: must differ from the networks that it leads to");
        }
        device.SetRouter(std::move(settings));
    }
}

}  // namespace simulator
