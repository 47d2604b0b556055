#include "VirtualDataLink/Layer.h"

#include <stdexcept>
#include <utility>

#include "VirtualDataLink/Framing.h"

namespace VirtualDataLink {

namespace {

constexpr unsigned short UnframedPort = 15;

VmacAddress ToVmacAddress(NetAddress const& netAddress) {
    VmacAddress address(false);
    address.SetPort(netAddress.port);
    address.SetAddress(netAddress.address);
    return address;
}

}  // namespace

Layer::Layer(IUdpSocket* ownedSocket) : socket(ownedSocket) {}

void Layer::Send(DuRequest request) {
    Socket().Send(Frame(std::move(request)));
}

void Layer::Send(std::vector<char> octets) {
    Packet packet;
    packet.address.port = UnframedPort;
    packet.data = std::move(octets);
    Socket().Send(std::move(packet));
}

DuIndication Layer::Receive() {
    for (;;) {
        Packet packet = Socket().Receive();
        if (auto npdu = Unframe(std::move(packet.data))) {
            return {ToVmacAddress(packet.address), std::move(*npdu)};
        }
    }
}

VmacAddress Layer::ResolveHostName(char const* name) {
    return ToVmacAddress(Socket().ResolveHostName(name));
}

void Layer::SetTimeout(int timeout) {
    Socket().SetTimeout(timeout);
}

std::unique_ptr<Layer> Layer::GetDefault() {
    return std::make_unique<Layer>();
}

IUdpSocket& Layer::Socket() {
    if (!socket) {
        throw std::runtime_error("data link layer has no socket");
    }
    return *socket;
}

}  // namespace VirtualDataLink
