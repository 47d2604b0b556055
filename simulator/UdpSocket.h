#pragma once

#include <optional>

#include "Endpoint.h"
#include "Standard.h"

namespace simulator {

// An IPv4 UDP socket that belongs to this object.
class UdpSocket {
public:
    // Binds it; port 0 takes any free one. Throws std::system_error.
    explicit UdpSocket(Endpoint const& local);
    ~UdpSocket();
    UdpSocket(UdpSocket&& other) noexcept;
    UdpSocket(UdpSocket const&) = delete;
    UdpSocket& operator=(UdpSocket const&) = delete;

    int Handle() const { return handle; }
    // Where it is bound.
    Endpoint Local() const;
    // The next datagram, if one is there; never waits.
    std::optional<Datagram> Receive();
    // A datagram that cannot be sent is lost, as any may be.
    void Send(Datagram const& datagram);

private:
    int handle;
};

}  // namespace simulator
