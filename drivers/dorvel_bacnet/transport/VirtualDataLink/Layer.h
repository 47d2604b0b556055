#pragma once

#include <memory>
#include <vector>

#include "VirtualDataLink/IDataLinkLayer.h"
#include "VirtualDataLink/IUdpSocket.h"

namespace VirtualDataLink {

// BACnet/IP (ASHRAE 135 Annex J) for a client: no BBMD, no foreign device. It has no state but its socket,
// adds no retry, and lets pass whatever the socket throws. Every operation on a layer without a socket throws
// std::runtime_error.
class Layer : public IDataLinkLayer {
public:
    // No socket.
    Layer() = default;
    // Takes ownership of the socket.
    explicit Layer(IUdpSocket* ownedSocket);

    // Sends the NPDU in a BVLC frame to the address and port of the request's destination.
    void Send(DuRequest request) override;
    // Sends the octets as they stand, without a BVLC header, to port 15 of no address.
    void Send(std::vector<char> octets);
    // Waits for the next frame that carries an NPDU; frames of other functions are dropped without a word.
    // A malformed frame is lost and throws std::runtime_error, as Unframe tells.
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
