#pragma once

#include <atomic>

#include "Link.h"
#include "UdpSocket.h"

namespace standard {

// A UDP socket and the steady clock.
class UdpLink : public Link {
public:
    // Binds the address; port 0 takes any free one. Throws std::system_error. `stopFlag`, if it is not null,
    // must outlive the link. A waiting Receive notices that it became true within 100 ms.
    explicit UdpLink(Endpoint const& local, std::atomic<bool> const* stopFlag = nullptr);

    void Send(Datagram const& datagram) override { socket.Send(datagram); }
    std::optional<Datagram> Receive(Time deadline) override;
    Time Now() const override { return std::chrono::steady_clock::now(); }
    bool IsStopped() const override { return stop && *stop; }
    // The local address and port.
    Endpoint Local() const { return socket.Local(); }

private:
    UdpSocket socket;
    std::atomic<bool> const* stop;
};

}  // namespace standard
