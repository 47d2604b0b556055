#pragma once

#include <map>
#include <memory>
#include <vector>

#include "Network/NDataUnitIndication.h"
#include "Network/NDataUnitRequest.h"
#include "VirtualDataLink/IDataLinkLayer.h"

namespace Network {

// The network layer of a client on one BACnet/IP link, which may reach a device behind one router. It sends
// no network-layer message, answers none and learns no path: the router's address comes with the request.
class Layer {
public:
    // Takes ownership of the data link.
    explicit Layer(VirtualDataLink::IDataLinkLayer* ownedDataLink);
    virtual ~Layer() = default;

    // A new layer over the default data link, which has no socket; the caller owns it.
    static Layer* GetDefault();

    // The six octets for a physical destination: the host's address with the given port.
    std::vector<char> ResolveHostName(char const* name, unsigned short port);

    void Send(NDataUnitRequest const& request);

    // The next NPDU, whatever it means. Of its header only source and expecting-reply are handed on. Throws
    // what the data link and Message::Parse throw.
    NDataUnitIndication Receive();

private:
    VirtualDataLink::IDataLinkLayer& DataLink();

    // Room for the physical address of each network's router. Nothing enters it: no path is remembered.
    std::map<unsigned short, std::vector<char>> routers;
    std::unique_ptr<VirtualDataLink::IDataLinkLayer> dataLink;
};

}  // namespace Network
