#pragma once

#include <atomic>
#include <vector>

#include "Link.h"
#include "UdpSocket.h"

namespace standard {

// A UDP socket and the steady clock.
class UdpLink : public Link {
public:
    // Binds the address; port 0 takes any free one. Throws std::system_error. `stopFlag`, if it is not null,
    // must outlive the link. A waiting Receive notices that it became true within 100 ms.
    explicit UdpLink(Endpoint const& local, std::atomic<bool> const* stopFlag = nullptr,
                     UdpOptions const& options = {});

    void Send(Datagram const& datagram) override { sockets.front().Send(datagram); }
    std::optional<Datagram> Receive(Time deadline) override;
    Time Now() const override { return std::chrono::steady_clock::now(); }
    bool IsStopped() const override { return stop && *stop; }
    // The local address and port.
    Endpoint Local() const { return sockets.front().Local(); }

protected:
    // Sends from `socket`, the first one, and receives from it and those that are added.
    UdpLink(UdpSocket socket, std::atomic<bool> const* stopFlag);
    void AddReceiver(UdpSocket socket) { sockets.push_back(std::move(socket)); }
    UdpSocket& Sender() { return sockets.front(); }

private:
    std::optional<Datagram> Waiting();

    std::vector<UdpSocket> sockets;
    std::size_t next = 0;  // the socket to look at first, so that none is left out
    std::atomic<bool> const* stop;
};

}  // namespace standard
