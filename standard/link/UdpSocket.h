#pragma once

#include <optional>

#include "Endpoint.h"

namespace standard {

// An IPv4 UDP socket, which the object owns.
class UdpSocket {
public:
    // Binds it; port 0 takes any free one. Throws std::system_error.
    explicit UdpSocket(Endpoint const& local);
    ~UdpSocket();
    UdpSocket(UdpSocket&& other) noexcept;
    UdpSocket(UdpSocket const&) = delete;
    UdpSocket& operator=(UdpSocket const&) = delete;

    int Handle() const { return handle; }
    // The local address and port.
    Endpoint Local() const;
    // The next datagram, or no value if none has arrived. Does not wait.
    std::optional<Datagram> Receive();
    // A datagram that cannot be sent is lost without an error.
    void Send(Datagram const& datagram);

private:
    int handle;
};

}  // namespace standard
