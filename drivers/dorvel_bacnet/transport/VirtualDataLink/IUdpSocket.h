#pragma once

#include "VirtualDataLink/NetAddress.h"
#include "VirtualDataLink/Packet.h"

namespace VirtualDataLink {

// The datagram socket that Layer sends and receives through. The driver has no implementation: the device
// client uses the socket of the host. The implementation defines the unit of the time-out.
class IUdpSocket {
public:
    virtual ~IUdpSocket() = default;

    virtual NetAddress ResolveHostName(char const* name) = 0;
    virtual void Send(Packet packet) = 0;
    // The next datagram with its sender.
    virtual Packet Receive() = 0;
    virtual void SetTimeout(int timeout) = 0;
};

}  // namespace VirtualDataLink
