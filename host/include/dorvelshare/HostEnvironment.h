#pragma once

#include <netinet/in.h>

#include "HostApi.h"

namespace dorvel {

// The one seam between the host and the world: datagrams and the clock. The operating system stands behind it
// unless somebody puts something else there: tests a scripted network in virtual time, the workbench a
// recorder. Calls come from many threads at once; one socket is used by one thread at a time.
class DORVEL_HOST_API HostEnvironment {
public:
    virtual ~HostEnvironment() = default;

    // A UDP socket bound to the local port, 0 meaning any. A handle of 0 or more, or -1.
    virtual int Open(unsigned short port) = 0;
    virtual unsigned short LocalPort(int handle) = 0;
    virtual void Close(int handle) = 0;

    // True when the datagram left.
    virtual bool Send(int handle, sockaddr_in const& peer, void const* data, int length) = 0;
    // Waits up to timeout milliseconds for a datagram, one that came earlier included; with 0 or less it does
    // not wait. The number of octets put into buffer (what does not fit is lost), or -1 when none came.
    virtual int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) = 0;

    // The time now as a file time: 100-nanosecond units since 1 January 1601, UTC.
    virtual long long Now() = 0;
    // A clock that is never set and never goes back, in the same units from any beginning.
    virtual long long SteadyNow() = 0;
    // Local time less UTC, in the same units.
    virtual long long LocalTimeDiff() = 0;
};

DORVEL_HOST_API HostEnvironment& SystemEnvironment();
DORVEL_HOST_API HostEnvironment& Environment();
// Null puts the operating system back. The environment stays the caller's and has to outlive its use.
DORVEL_HOST_API void SetEnvironment(HostEnvironment* environment);

}  // namespace dorvel
