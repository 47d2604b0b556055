#pragma once

#include <netinet/in.h>

#include "HostApi.h"

namespace dorvel {

// The only interface between the host and the outside: datagrams and the clock. The default is the operating
// system; tests replace it with a scripted network in virtual time, the workbench with a recorder. Called
// from many threads at once; one thread at a time uses a socket.
class DORVEL_HOST_API HostEnvironment {
public:
    virtual ~HostEnvironment() = default;

    // Opens a UDP socket on the local port, 0 for any. Returns a handle of 0 or more, or -1.
    virtual int Open(unsigned short port) = 0;
    virtual unsigned short LocalPort(int handle) = 0;
    virtual void Close(int handle) = 0;

    // True when the datagram was sent.
    virtual bool Send(int handle, sockaddr_in const& peer, void const* data, int length) = 0;
    // Takes a datagram that has come, or waits up to timeout milliseconds for one; with 0 or less it does not
    // wait. Returns the number of octets put into buffer (the rest is lost), or -1 when none came.
    virtual int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) = 0;

    // The current time as a file time: 100-nanosecond units since 1 January 1601, UTC.
    virtual long long Now() = 0;
    // A monotonic clock in the same units, from an arbitrary origin.
    virtual long long SteadyNow() = 0;
    // Local time minus UTC, in the same units.
    virtual long long LocalTimeDiff() = 0;
};

DORVEL_HOST_API HostEnvironment& SystemEnvironment();
DORVEL_HOST_API HostEnvironment& Environment();
// Null restores the operating system. The caller owns the environment, which must outlive its use.
DORVEL_HOST_API void SetEnvironment(HostEnvironment* environment);

}  // namespace dorvel
