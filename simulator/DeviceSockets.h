#pragma once

#include <optional>
#include <string>
#include <vector>

#include "FaultyStation.h"
#include "UdpSocket.h"

namespace simulator {

// The sockets of one address and port: that of the address, and on the same port one for each broadcast
// address of its network, since a socket with an address gets no broadcasts. Other programs can share the
// broadcasts. With the address 0.0.0.0 one socket gets all.
class DeviceSockets {
public:
    // Port 0 takes any free one. Throws std::system_error if the address cannot be bound.
    explicit DeviceSockets(Endpoint const& local);

    Endpoint Local() const { return own.Local(); }
    // Those that become readable.
    std::vector<int> Handles() const;
    // The next datagram of any of them, or no value if none has arrived. Does not wait.
    std::optional<Datagram> Receive();
    // Sends from the address; to AllOfLink, to the broadcast address on the same port. With `fromElsewhere`,
    // from another address or, if there is none, another port; lost without either.
    void Send(Datagram datagram, bool fromElsewhere);
    // The broadcasts that are not received, each with the reason.
    std::vector<std::string> const& Notes() const { return notes; }

private:
    void Share(std::uint32_t address, std::string const& interfaceName);

    UdpSocket own;
    std::uint32_t broadcastAddress = 0xFFFFFFFF;
    std::vector<UdpSocket> broadcasts;
    std::optional<UdpSocket> elsewhere;  // opened when first needed
    std::vector<std::string> notes;
};

}  // namespace simulator
