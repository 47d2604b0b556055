#pragma once

#include <map>
#include <memory>
#include <vector>

#include "Network/NDataUnitIndication.h"
#include "Network/NDataUnitRequest.h"
#include "VirtualDataLink/IDataLinkLayer.h"

namespace Network {

// No poll enters this class: the device client builds and reads its NPDUs itself. A write creates a default
// layer and passes it on, but sends nothing through it.
//
// The network layer of a client on one BACnet/IP link, which may reach a device through one router. It sends
// and answers no network-layer message and learns no path: each request carries the router's address. One
// thread uses a layer at a time.
class Layer {
public:
    // Takes ownership of the data link.
    explicit Layer(VirtualDataLink::IDataLinkLayer* ownedDataLink);
    virtual ~Layer() = default;

    // A new layer over the default data link, which has no socket. The caller owns the layer. Its other
    // operations throw std::runtime_error.
    static Layer* GetDefault();

    // The six octets of a physical destination: the address of the host with the given port.
    std::vector<char> ResolveHostName(char const* name, unsigned short port);

    void Send(NDataUnitRequest const& request);

    // The next NPDU, network-layer messages included. Of its header only the source and expecting-reply are
    // returned. Throws what the data link and Message::Parse throw.
    NDataUnitIndication Receive();

private:
    VirtualDataLink::IDataLinkLayer& DataLink();

    // Room for the physical address of the router of each network. It stays empty, as no path is learned.
    std::map<unsigned short, std::vector<char>> routers;
    std::unique_ptr<VirtualDataLink::IDataLinkLayer> dataLink;
};

}  // namespace Network
