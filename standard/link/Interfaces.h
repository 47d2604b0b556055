#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace standard {

// An IPv4 address of a network interface of this machine; addresses in host byte order.
struct Interface {
    std::string name;  // "eth0"
    std::uint32_t address = 0;
    // That of the address's subnet; on the loopback interface 127.255.255.255. A network of one or two
    // addresses and a point-to-point link have none.
    std::optional<std::uint32_t> broadcast;
    bool isLoopback = false;
};

// The addresses of the interfaces that are up: an interface with several of them has as many elements. In the
// order of the system. Empty if the system does not list them.
std::vector<Interface> Interfaces();

// The interface address from which datagrams to that one are sent. No value if there is no route.
std::optional<Interface> InterfaceTowards(std::uint32_t destination);

// The broadcast address of the subnet of an address, with the bits of its netmask.
std::optional<std::uint32_t> BroadcastOf(std::uint32_t address, std::uint32_t netmask);

}  // namespace standard
