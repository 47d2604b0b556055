#pragma once

#include <optional>
#include <string>
#include <system_error>

#include "Endpoint.h"

namespace standard {

struct UdpOptions {
    // May send to broadcast addresses.
    bool sendsBroadcasts = false;
    // Other sockets with this option may bind the same address and port (SO_REUSEADDR). Each of them receives
    // a broadcast; a unicast only one of them, so this is for sockets that are bound to a broadcast address.
    bool sharesPort = false;
    // Receives and sends by the interface of that name only (SO_BINDTODEVICE); empty: by any. The label of a
    // further address, "eth0:1", stands for its interface.
    std::string interfaceName = {};
};

// An IPv4 UDP socket, which the object owns.
class UdpSocket {
public:
    // Binds it; port 0 takes any free one. With a broadcast address it receives the broadcasts to that
    // address and no other datagrams. Throws std::system_error.
    explicit UdpSocket(Endpoint const& local, UdpOptions const& options = {});
    ~UdpSocket();
    UdpSocket(UdpSocket&& other) noexcept;
    UdpSocket(UdpSocket const&) = delete;
    UdpSocket& operator=(UdpSocket const&) = delete;

    int Handle() const { return handle; }
    // The local address and port.
    Endpoint Local() const;
    // The next datagram, or no value if none has arrived. Does not wait.
    std::optional<Datagram> Receive();
    // A datagram that cannot be sent is lost. Returns why, for those who want to know.
    std::error_code Send(Datagram const& datagram);

private:
    int handle;
};

// The local address from which datagrams to that one are sent. No value if there is no route.
std::optional<std::uint32_t> LocalAddressTowards(std::uint32_t destination);

}  // namespace standard
