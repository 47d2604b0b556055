#pragma once

#include <memory>
#include <vector>

#include "VirtualDataLink/IDataLinkLayer.h"
#include "VirtualDataLink/IUdpSocket.h"

namespace VirtualDataLink {

// No poll enters this class: the device client frames its datagrams itself (Framing.h). A write creates a
// layer without a socket and sends nothing through it.
//
// BACnet/IP (ASHRAE 135 Annex J) for a client that is neither a BBMD nor a foreign device. Its only state is
// the socket. It adds no retry and passes on whatever the socket throws. Every operation of a layer without a
// socket throws std::runtime_error.
class Layer : public IDataLinkLayer {
public:
    // No socket.
    Layer() = default;
    // Takes ownership of the socket.
    explicit Layer(IUdpSocket* ownedSocket);

    // Sends the NPDU in a BVLC frame to the address and port of the request's destination.
    void Send(DuRequest request) override;
    // Sends the octets unchanged, without a BVLC header, to address 0 and port 15.
    void Send(std::vector<char> octets);
    // Waits for the next frame that carries an NPDU and drops frames of other functions. A malformed frame is
    // lost and throws std::runtime_error, as Unframe does.
    DuIndication Receive() override;
    VmacAddress ResolveHostName(char const* name) override;
    void SetTimeout(int timeout) override;

    // A new layer without a socket.
    static std::unique_ptr<Layer> GetDefault();

private:
    IUdpSocket& Socket();

    std::unique_ptr<IUdpSocket> socket;
};

}  // namespace VirtualDataLink
