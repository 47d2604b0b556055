#include "UdpLink.h"

#include <poll.h>

#include <algorithm>

namespace standard {

using std::chrono::milliseconds;

UdpLink::UdpLink(Endpoint const& local, std::atomic<bool> const* stopFlag) : socket(local), stop(stopFlag) {}

std::optional<Datagram> UdpLink::Receive(Time deadline) {
    constexpr milliseconds longestWait{100};
    while (!IsStopped()) {
        if (auto datagram = socket.Receive()) {
            return datagram;
        }
        auto const left = std::chrono::ceil<milliseconds>(deadline - Now());
        if (left <= milliseconds::zero()) {
            return std::nullopt;
        }
        pollfd waiting{socket.Handle(), POLLIN, 0};
        // Errors and signals end the wait, and the loop looks again.
        if (poll(&waiting, 1, static_cast<int>(std::min(left, longestWait).count())) < 0) {
            continue;
        }
    }
    return std::nullopt;
}

}  // namespace standard
