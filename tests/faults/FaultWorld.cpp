#include "FaultWorld.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <algorithm>
#include <stdexcept>

namespace test {

namespace {

// 1 January 2024, 00:00 UTC, as a file time, and in milliseconds since 1 January 1970.
constexpr long long StartAsFileTime = 133485408000000000;
constexpr std::chrono::seconds StartAsUnixTime(1704067200);
constexpr long long UnitsPerMillisecond = 10000;

// The driver's address, and one that no device has.
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

FaultWorld::Device& FaultWorld::At(simulator::Endpoint const& endpoint) {
    auto const device = std::find_if(devices.begin(), devices.end(), [&endpoint](Device const& candidate) {
        return candidate.endpoint == endpoint;
    });
    if (device == devices.end()) {
        throw std::logic_error("no device is there");
    }
    return *device;
}

void FaultWorld::SetRoundTrip(simulator::Endpoint const& peer, long long milliseconds) {
    At(peer).roundTrip = milliseconds;
}

void FaultWorld::Hold(simulator::Endpoint const& peer, long long milliseconds) {
    At(peer).heldUntil = elapsed + milliseconds;
}

std::size_t FaultWorld::Waiting() const {
    std::size_t count = underWay.size();
    for (auto const& [handle, socket] : sockets) {
        count += socket.waiting.size();
    }
    for (Device const& device : devices) {
        count += device.held.size();
    }
    return count;
}

bool FaultWorld::IsTaken(unsigned short port) const {
    return std::any_of(sockets.begin(), sockets.end(),
                       [port](auto const& entry) { return entry.second.port == port; });
}

int FaultWorld::Open(unsigned short port) {
    if (port == 0) {
        do {
            nextFreePort =
                nextFreePort == 65535 ? FirstFreePort : static_cast<unsigned short>(nextFreePort + 1);
        } while (IsTaken(nextFreePort));
        port = nextFreePort;
    } else if (IsTaken(port)) {
        return -1;
    }
    sockets[nextHandle].port = port;
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
            if (device.heldUntil > elapsed) {
                device.held.push_back(datagram);
            } else {
                Deliver(device, device.station.Receive(datagram, Moment()));
            }
        }
    }
    return true;
}

void FaultWorld::Deliver(Device const& from, std::vector<simulator::Delivery> deliveries) {
    for (simulator::Delivery& delivery : deliveries) {
        if (delivery.datagram.peer.address != HostAddress) {
            continue;
        }
        Arrival arrival{delivery.fromElsewhere ? Elsewhere : from.endpoint, delivery.datagram.peer.port,
                        std::move(delivery.datagram.octets)};
        long long const delay = delivery.delay.count() + from.roundTrip;
        if (delay == 0) {
            Arrive(std::move(arrival));
        } else {
            underWay.emplace(elapsed + delay, std::move(arrival));
        }
    }
}

void FaultWorld::Arrive(Arrival arrival) {
    auto const socket = std::find_if(sockets.begin(), sockets.end(), [&arrival](auto const& entry) {
        return entry.second.port == arrival.port;
    });
    if (socket != sockets.end() && socket->second.waiting.size() < SocketRoom) {
        socket->second.waiting.push_back(std::move(arrival));
    }
}

void FaultWorld::Inject(simulator::Endpoint const& from, long long delay, simulator::Octets octets) {
    for (auto& [handle, socket] : sockets) {
        if (socket.lastPeer == from) {
            underWay.emplace(elapsed + delay, Arrival{from, socket.port, octets});
        }
    }
}

int FaultWorld::Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) {
    auto& waiting = sockets.at(handle).waiting;
    long long const deadline = elapsed + timeout;
    while (waiting.empty()) {
        if (elapsed == deadline) {
            return -1;
        }
        AdvanceTo(std::min(deadline, NextEvent()));
    }
    auto const& octets = waiting.front().octets;
    auto const count = std::min(octets.size(), static_cast<std::size_t>(size));
    std::copy_n(octets.begin(), count, static_cast<char*>(buffer));
    sender = AddressOf(waiting.front().sender);
    waiting.pop_front();
    return static_cast<int>(count);
}

void FaultWorld::AdvanceTo(long long time) {
    for (long long next = NextEvent(); next <= time; next = NextEvent()) {
        elapsed = next;
        HandleEvents();
    }
    elapsed = time;
}

// The next time when devices get the time, a held device continues, or a datagram arrives.
long long FaultWorld::NextEvent() const {
    long long next = nextTick;
    if (!underWay.empty()) {
        next = std::min(next, underWay.begin()->first);
    }
    for (Device const& device : devices) {
        if (device.heldUntil > elapsed || !device.held.empty()) {
            next = std::min(next, device.heldUntil);
        }
    }
    return next;
}

// All devices get the time at the same moments, regardless of who waits.
void FaultWorld::HandleEvents() {
    bool const isTick = elapsed == nextTick;
    nextTick += isTick ? TickPeriod : 0;
    for (Device& device : devices) {
        if (device.heldUntil > elapsed) {
            continue;
        }
        for (simulator::Datagram const& datagram : std::exchange(device.held, {})) {
            Deliver(device, device.station.Receive(datagram, Moment()));
        }
        if (isTick) {
            Deliver(device, device.station.Tick(Moment()));
        }
    }
    while (!underWay.empty() && underWay.begin()->first <= elapsed) {
        Arrival arrival = std::move(underWay.begin()->second);
        underWay.erase(underWay.begin());
        Arrive(std::move(arrival));
    }
}

simulator::Moment FaultWorld::Moment() const {
    std::chrono::milliseconds const sinceStart(elapsed);
    return {sinceStart, StartAsUnixTime + sinceStart};
}

long long FaultWorld::Now() {
    return StartAsFileTime + elapsed * UnitsPerMillisecond;
}

}  // namespace test
