#include "DeviceSockets.h"

#include <algorithm>
#include <system_error>

#include "Interfaces.h"

namespace simulator {

namespace {

constexpr std::uint32_t AnyAddress = 0;
constexpr std::uint32_t LimitedBroadcast = 0xFFFFFFFF;
constexpr std::uint32_t Loopback = 127;  // the first octet

bool IsLoopback(std::uint32_t address) {
    return address >> 24 == Loopback;
}

// The interface of an address. All addresses 127.x.x.x are those of the loopback interface.
std::optional<Interface> InterfaceOf(std::uint32_t address) {
    auto const all = Interfaces();
    auto const found = std::find_if(all.begin(), all.end(), [&](Interface const& one) {
        return one.address == address || (one.isLoopback && IsLoopback(address));
    });
    return found == all.end() ? std::nullopt : std::optional(*found);
}

UdpOptions SendingBroadcasts() {
    UdpOptions options;
    options.sendsBroadcasts = true;
    return options;
}

// A socket with another address than the device: on a loopback address the next one with the same port,
// otherwise another port of the same address. No value if neither can be bound.
std::optional<UdpSocket> OpenElsewhere(Endpoint const& device) {
    Endpoint const next{device.address + 1, device.port};
    Endpoint const otherPort{device.address, 0};
    for (Endpoint const& endpoint : {next, otherPort}) {
        if (endpoint.port != 0 && (!IsLoopback(device.address) || !IsLoopback(next.address))) {
            continue;
        }
        try {
            return UdpSocket(endpoint, SendingBroadcasts());
        } catch (std::system_error const&) {
            continue;  // tries the other one
        }
    }
    return std::nullopt;
}

// Of the broadcasts to 255.255.255.255, those of one interface. A system that does not allow that gives those
// of all.
UdpSocket OpenShared(Endpoint const& local, std::string const& interfaceName) {
    UdpOptions options;
    options.sharesPort = true;
    options.interfaceName = interfaceName;
    try {
        return UdpSocket(local, options);
    } catch (std::system_error const&) {
        options.interfaceName.clear();
        return UdpSocket(local, options);
    }
}

}  // namespace

DeviceSockets::DeviceSockets(Endpoint const& local) : own(local, SendingBroadcasts()) {
    auto const interface = local.address == AnyAddress ? std::nullopt : InterfaceOf(local.address);
    if (!interface) {
        return;
    }
    broadcastAddress = interface->broadcast.value_or(LimitedBroadcast);
    if (interface->broadcast) {
        Share(*interface->broadcast, "");
    }
    Share(LimitedBroadcast, interface->name);
}

void DeviceSockets::Share(std::uint32_t address, std::string const& interfaceName) try {
    broadcasts.push_back(OpenShared({address, Local().port}, interfaceName));
} catch (std::system_error const& error) {
    notes.push_back(std::string(error.what()) + "; broadcasts to that address are not answered");
}

std::vector<int> DeviceSockets::Handles() const {
    std::vector<int> handles{own.Handle()};
    for (UdpSocket const& socket : broadcasts) {
        handles.push_back(socket.Handle());
    }
    return handles;
}

std::optional<Datagram> DeviceSockets::Receive() {
    auto datagram = own.Receive();
    for (UdpSocket& socket : broadcasts) {
        if (!datagram) {
            datagram = socket.Receive();
        }
    }
    return datagram;
}

void DeviceSockets::Send(Datagram datagram, bool fromElsewhere) {
    if (datagram.peer == AllOfLink) {
        datagram.peer = {broadcastAddress, Local().port};
    }
    if (!fromElsewhere) {
        own.Send(datagram);
        return;
    }
    if (!elsewhere) {
        if (auto opened = OpenElsewhere(Local())) {
            elsewhere.emplace(std::move(*opened));
        }
    }
    if (elsewhere) {
        elsewhere->Send(datagram);
    }
}

}  // namespace simulator
