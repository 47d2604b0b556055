#include "FaultWorld.h"

#include <algorithm>
#include <stdexcept>

namespace test {

namespace {

// 1 January 2024, 00:00 UTC, as a file time, and since 1 January 1970.
constexpr long long StartAsFileTime = 133485408000000000;
constexpr std::chrono::seconds StartAsUnixTime(1704067200);
constexpr long long UnitsPerMillisecond = 10000;

// The driver's own address, and one that belongs to none of the devices.
constexpr std::uint32_t HostAddress = 0xC0A80A01;
constexpr simulator::Endpoint Elsewhere{0xC0A80AFE, 47808};

simulator::Endpoint EndpointOf(sockaddr_in const& address) {
    return {ntohl(address.sin_addr.s_addr), ntohs(address.sin_port)};
}

sockaddr_in AddressOf(simulator::Endpoint const& endpoint) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(endpoint.address);
    address.sin_port = htons(endpoint.port);
    return address;
}

}  // namespace

FaultWorld::FaultWorld() {
    if (&dorvel::Environment() != &dorvel::SystemEnvironment()) {
        throw std::logic_error("there is another world");
    }
    dorvel::SetEnvironment(this);
}

simulator::FaultyStation& FaultWorld::Place(simulator::Endpoint const& endpoint, simulator::Device device) {
    devices.remove_if([&endpoint](Device const& old) { return old.endpoint == endpoint; });
    return devices.emplace_back(endpoint, std::move(device)).station;
}

std::size_t FaultWorld::Waiting() const {
    std::size_t count = 0;
    for (auto const& [handle, socket] : sockets) {
        count += socket.arrivals.size();
    }
    return count;
}

int FaultWorld::Open(unsigned short port) {
    unsigned short const bound = port != 0 ? port : nextFreePort;
    bool const isTaken = std::any_of(sockets.begin(), sockets.end(),
                                     [bound](auto const& entry) { return entry.second.port == bound; });
    if (isTaken) {
        return -1;
    }
    nextFreePort = port != 0 ? nextFreePort : static_cast<unsigned short>(nextFreePort + 1);
    sockets[nextHandle].port = bound;
    return nextHandle++;
}

bool FaultWorld::Send(int handle, sockaddr_in const& peer, void const* data, int length) {
    auto const* first = static_cast<char const*>(data);
    simulator::Endpoint const target = EndpointOf(peer);
    simulator::Datagram datagram{{HostAddress, sockets.at(handle).port},
                                 simulator::Octets(first, first + length)};
    sockets.at(handle).lastPeer = target;
    if (onSend) {
        onSend();
    }
    if (target == recordedPeer) {
        record.push_back(datagram.octets);
    }
    if (target == cutOffPeer && sendsLeft != Never && (sendsLeft == 0 || --sendsLeft == 0)) {
        return true;
    }
    for (Device& device : devices) {
        if (device.endpoint == target) {
            Deliver(device.endpoint, device.station.receive(datagram, Moment()));
        }
    }
    return true;
}

void FaultWorld::Deliver(simulator::Endpoint const& from, std::vector<simulator::Delivery> deliveries) {
    for (simulator::Delivery& delivery : deliveries) {
        auto const socket = std::find_if(sockets.begin(), sockets.end(), [&](auto const& entry) {
            return delivery.datagram.peer == simulator::Endpoint{HostAddress, entry.second.port};
        });
        if (socket != sockets.end() && socket->second.arrivals.size() < SocketRoom) {
            socket->second.arrivals.emplace(
                elapsed + delivery.delay.count(),
                Arrival{delivery.fromElsewhere ? Elsewhere : from, std::move(delivery.datagram.octets)});
        }
    }
}

void FaultWorld::Inject(simulator::Endpoint const& from, long long delay, simulator::Octets octets) {
    for (auto& [handle, socket] : sockets) {
        if (socket.lastPeer == from) {
            socket.arrivals.emplace(elapsed + delay, Arrival{from, octets});
        }
    }
}

int FaultWorld::Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) {
    auto& arrivals = sockets.at(handle).arrivals;
    long long const deadline = elapsed + timeout;
    while (arrivals.empty() || arrivals.begin()->first > elapsed) {
        if (elapsed == deadline) {
            return -1;
        }
        long long const next = arrivals.empty() ? deadline : std::min(deadline, arrivals.begin()->first);
        AdvanceTo(std::min(next, nextTick));
    }
    auto const first = arrivals.begin();
    auto const& octets = first->second.octets;
    auto const count = std::min(octets.size(), static_cast<std::size_t>(size));
    std::copy_n(octets.begin(), count, static_cast<char*>(buffer));
    sender = AddressOf(first->second.sender);
    arrivals.erase(first);
    return static_cast<int>(count);
}

// Every device gets the time at the same moments, whoever waits.
void FaultWorld::AdvanceTo(long long time) {
    while (nextTick <= time) {
        elapsed = nextTick;
        nextTick += TickPeriod;
        for (Device& device : devices) {
            Deliver(device.endpoint, device.station.tick(Moment()));
        }
    }
    elapsed = time;
}

simulator::Moment FaultWorld::Moment() const {
    std::chrono::milliseconds const sinceStart(elapsed);
    return {sinceStart, StartAsUnixTime + sinceStart};
}

long long FaultWorld::Now() {
    return StartAsFileTime + elapsed * UnitsPerMillisecond;
}

}  // namespace test
