#pragma once

#include <string>
#include <vector>

#include "Interfaces.h"
#include "UdpLink.h"

namespace standard {

constexpr std::uint16_t BacnetPort = 0xBAC0;  // 47808

// A link that hears the answers to a Who-Is, which devices send to the port of the question or to their own
// one, as unicast or as broadcast. It sends from the interface's address: from the BACnet port if no program
// holds it, otherwise from a free one. It listens to the broadcasts of the interface's subnet and to limited
// ones (255.255.255.255) at both ports, which it shares with other programs without taking their unicasts.
class DiscoveryLink : public UdpLink {
public:
    // `port` is the port of the devices. `stopFlag` as in UdpLink. Throws std::system_error if nothing can be
    // sent from the address.
    explicit DiscoveryLink(Interface const& networkInterface, std::uint16_t port = BacnetPort,
                           std::atomic<bool> const* stopFlag = nullptr);

    void Send(Datagram const& datagram) override;

    // Answers that cannot be heard and the datagrams that could not be sent, in whole sentences; empty if
    // nothing is wrong.
    std::vector<std::string> const& Limits() const { return limits; }

private:
    void Listen(Endpoint const& broadcasts, std::string const& interfaceName);

    std::vector<std::string> limits;
};

}  // namespace standard
