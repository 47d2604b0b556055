#pragma once

#include "VirtualDataLink/NetAddress.h"
#include "VirtualDataLink/Packet.h"

namespace VirtualDataLink {

// The datagram socket that Layer is written against. Time-outs and their unit are the socket's business.
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
