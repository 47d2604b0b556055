#include "DiscoveryLink.h"

#include <algorithm>
#include <set>

namespace standard {

namespace {

constexpr std::uint32_t LimitedBroadcast = 0xFFFFFFFF;

UdpOptions Sending() {
    UdpOptions options;
    options.sendsBroadcasts = true;
    return options;
}

// The socket of the BACnet port gets also the answers that devices send to that port, whatever the port of
// the question was.
UdpSocket Bound(std::uint32_t address, std::uint16_t port) {
    try {
        return UdpSocket({address, port}, Sending());
    } catch (std::system_error const&) {
        return UdpSocket({address, 0}, Sending());
    }
}

}  // namespace

DiscoveryLink::DiscoveryLink(Interface const& networkInterface, std::uint16_t port,
                             std::atomic<bool> const* stopFlag)
    : UdpLink(Bound(networkInterface.address, port), stopFlag) {
    Endpoint const local = Local();
    if (local.port != port) {
        limits.push_back("Another program holds " + Endpoint{networkInterface.address, port}.Text() +
                         ": answers that devices send to that port as unicast are not seen.");
    }
    for (std::uint16_t const listened : std::set<std::uint16_t>{port, local.port}) {
        if (networkInterface.broadcast) {
            Listen({*networkInterface.broadcast, listened}, {});
        }
        if (!networkInterface.isLoopback) {
            Listen({LimitedBroadcast, listened}, networkInterface.name);
        }
    }
}

void DiscoveryLink::Listen(Endpoint const& broadcasts, std::string const& interfaceName) try {
    UdpOptions options;
    options.sharesPort = true;
    options.interfaceName = interfaceName;
    AddReceiver(UdpSocket(broadcasts, options));
} catch (std::system_error const& error) {
    limits.push_back("Broadcasts to " + broadcasts.Text() + " cannot be received (" + error.code().message() +
                     "): devices that answer by broadcast are not seen.");
}

void DiscoveryLink::Send(Datagram const& datagram) {
    std::error_code const problem = Sender().Send(datagram);
    if (!problem) {
        return;
    }
    std::string sentence =
        "Nothing could be sent to " + datagram.peer.Text() + " (" + problem.message() + ").";
    if (std::find(limits.begin(), limits.end(), sentence) == limits.end()) {
        limits.push_back(std::move(sentence));
    }
}

}  // namespace standard
