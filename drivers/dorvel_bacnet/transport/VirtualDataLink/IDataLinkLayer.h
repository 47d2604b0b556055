#pragma once

#include "VirtualDataLink/DuIndication.h"
#include "VirtualDataLink/DuRequest.h"
#include "VmacAddress.h"

namespace VirtualDataLink {

// The operations of a data link that the network layer uses.
class IDataLinkLayer {
public:
    virtual ~IDataLinkLayer() = default;

    virtual void Send(DuRequest request) = 0;
    virtual DuIndication Receive() = 0;
    virtual VmacAddress ResolveHostName(char const* name) = 0;
    virtual void SetTimeout(int timeout) = 0;

    // A new Layer without a socket; the caller owns it.
    static IDataLinkLayer* GetDefault();
};

}  // namespace VirtualDataLink
