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

    int handle() const { return m_handle; }
    // Where it is bound.
    Endpoint local() const;
    // The next datagram, if one is there; never waits.
    std::optional<Datagram> receive();
    // A datagram that cannot be sent is lost, as any may be.
    void send(Datagram const& datagram);

private:
    int m_handle;
};

}  // namespace simulator
