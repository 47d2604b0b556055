#pragma once

#include <netinet/in.h>

#include "OctetVector.h"

namespace workbench {

using standard::Octets;

// The capture file format that packet analysers read (libpcap 2.4, little-endian, microseconds), link type
// 101: raw IPv4. Addresses and ports are in network byte order, as in sockaddr_in.

// The 24 octets at the beginning of a capture file.
Octets CaptureHeader();

// A UDP datagram as a packet record with IPv4 and UDP headers (RFC 791, RFC 768), including lengths and
// checksums. fileTime is its time in 100-nanosecond units since 1601; identification is that of the IPv4
// packet. Data beyond the 65507 octets of the largest datagram is cut off.
Octets CaptureRecord(sockaddr_in const& from, sockaddr_in const& to, void const* data, int length,
                     long long fileTime, unsigned short identification);

}  // namespace workbench
