#include "UdpLink.h"

#include <poll.h>

#include <algorithm>

namespace standard {

using std::chrono::milliseconds;

UdpLink::UdpLink(Endpoint const& local, std::atomic<bool> const* stopFlag, UdpOptions const& options)
    : UdpLink(UdpSocket(local, options), stopFlag) {}

UdpLink::UdpLink(UdpSocket socket, std::atomic<bool> const* stopFlag) : stop(stopFlag) {
    sockets.push_back(std::move(socket));
}

std::optional<Datagram> UdpLink::Receive(Time deadline) {
    constexpr milliseconds longestWait{100};
    while (!IsStopped()) {
        if (auto datagram = Waiting()) {
            return datagram;
        }
        auto const left = std::chrono::ceil<milliseconds>(deadline - Now());
        if (left <= milliseconds::zero()) {
            return std::nullopt;
        }
        std::vector<pollfd> waiting;
        for (UdpSocket const& socket : sockets) {
            waiting.push_back({socket.Handle(), POLLIN, 0});
        }
        // Errors and signals end the wait, and the loop looks again.
        if (poll(waiting.data(), waiting.size(), static_cast<int>(std::min(left, longestWait).count())) < 0) {
            continue;
        }
    }
    return std::nullopt;
}

// A datagram that has arrived. The sockets take turns.
std::optional<Datagram> UdpLink::Waiting() {
    for (std::size_t tried = 0; tried < sockets.size(); ++tried) {
        UdpSocket& socket = sockets[next];
        next = (next + 1) % sockets.size();
        if (auto datagram = socket.Receive()) {
            return datagram;
        }
    }
    return std::nullopt;
}

}  // namespace standard
