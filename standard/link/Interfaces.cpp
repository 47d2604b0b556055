#include "Interfaces.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>

#include <algorithm>
#include <memory>

#include "UdpSocket.h"

namespace standard {

namespace {

std::uint32_t AddressOf(sockaddr const* address) {
    return ntohl(reinterpret_cast<sockaddr_in const*>(address)->sin_addr.s_addr);
}

bool HasIpv4(ifaddrs const& entry) {
    return (entry.ifa_flags & IFF_UP) != 0 && entry.ifa_addr && entry.ifa_addr->sa_family == AF_INET &&
           entry.ifa_netmask;
}

// The loopback interface has no broadcast address for the system, but its subnet has one that works.
Interface Made(ifaddrs const& entry) {
    Interface made{entry.ifa_name, AddressOf(entry.ifa_addr), std::nullopt, false};
    made.isLoopback = (entry.ifa_flags & IFF_LOOPBACK) != 0;
    if ((entry.ifa_flags & IFF_BROADCAST) != 0 && entry.ifa_broadaddr) {
        made.broadcast = AddressOf(entry.ifa_broadaddr);
    }
    bool const isLinkOfTwo = (entry.ifa_flags & IFF_POINTOPOINT) != 0;
    auto const ofSubnet = BroadcastOf(made.address, AddressOf(entry.ifa_netmask));
    if (!made.broadcast || *made.broadcast == 0 || *made.broadcast == made.address) {
        made.broadcast = isLinkOfTwo ? std::nullopt : ofSubnet;
    }
    return made;
}

}  // namespace

std::optional<std::uint32_t> BroadcastOf(std::uint32_t address, std::uint32_t netmask) {
    std::uint32_t const ofHosts = ~netmask;
    return ofHosts > 1 ? std::optional<std::uint32_t>(address | ofHosts) : std::nullopt;
}

std::vector<Interface> Interfaces() {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) {
        return {};
    }
    std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> const owner(first, freeifaddrs);
    std::vector<Interface> found;
    for (ifaddrs const* entry = first; entry; entry = entry->ifa_next) {
        if (HasIpv4(*entry)) {
            found.push_back(Made(*entry));
        }
    }
    return found;
}

std::optional<Interface> InterfaceTowards(std::uint32_t destination) {
    auto const address = LocalAddressTowards(destination);
    auto const all = Interfaces();
    auto const found =
        std::find_if(all.begin(), all.end(), [&](Interface const& one) { return one.address == address; });
    return address && found != all.end() ? std::optional<Interface>(*found) : std::nullopt;
}

}  // namespace standard
