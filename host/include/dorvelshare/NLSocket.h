#pragma once

#include <netinet/in.h>

#include "HostApi.h"

// A UDP socket of the runtime. The caller owns the record; the record owns the socket alone.
struct NLSocket {
    unsigned char open;        // open mark: non-zero while there is a socket
    unsigned char unanswered;  // non-zero when the last request got no answer: the next one changes the port
    // Local port, host byte order: the runtime's base port before opening, then the bound one.
    unsigned short port;
    int handle;           // the environment's handle, -1 while closed
    sockaddr_in address;  // the peer, for the owner of the record; not used here
    // The range of local ports that NLTryOpenUDPSocket was given; a count of 0 means any port.
    unsigned short firstPort;
    unsigned short portCount;
    long long lastUse;  // when the last call on the open socket ended, by HostEnvironment::SteadyNow
};

// The local port of a prepared record: BACnet/IP's, so that the port above it is one that installations
// expect.
constexpr unsigned short NLBasePort = 47808;

// Prepares the record: closed, local port NLBasePort, no address. Opens nothing.
DORVEL_HOST_API void NLInitSocket(NLSocket* socket);

// Fills a socket address: address is an IPv4 address whose most significant octet is the first of the dotted
// form, port is in host byte order.
DORVEL_HOST_API void NLMakeAddress(sockaddr_in* target, unsigned int address, unsigned short port);

// The address of a dotted text, 0 for any other text.
DORVEL_HOST_API unsigned int IPAddressFromString(char const* text);

// Opens the socket on the first free one of count local ports from port upward. It takes a port that another
// socket has just left only where no other is free. Returns 0, or -1 when none is free. An open socket is
// closed first. A socket that could not be opened is opened on any free port at its first use.
DORVEL_HOST_API int NLTryOpenUDPSocket(NLSocket* socket, unsigned short port, int count);

// Sends length octets to the peer (nothing when data is null and length 0) and waits up to timeout
// milliseconds for one datagram, whoever sent it. Returns the number of octets put into buffer; 0 or less
// when nothing came or nothing could be sent. A closed socket is opened on any free port. retries: how often
// a request without an answer is repeated; receive: 0 to send only; task: the number of the task that waits,
// for the trace.
//
// Answers to earlier requests are kept away from a request, as far as is possible without reading them:
// - After a request without an answer, and in the first request of a cycle that follows a fault
//   (NLBeginCycle), the socket changes to another local port: the next free one of the range of
//   NLTryOpenUDPSocket, or any free one where there was no range or none of it is free. A late answer then
//   reaches a closed port: for 10 s the sockets of the process avoid a port that was left. If no other port
//   is free, the socket keeps its own.
// - A request on a socket that has not been used for 20 ms first drops the datagrams that wait there, 256 at
//   most. Within an exchange nothing is dropped, so segments that come faster than they are acknowledged are
//   all received.
// A call that only receives does neither: it takes a datagram that came before it.
DORVEL_HOST_API int NLSendReceive(NLSocket* socket, sockaddr_in* peer, void const* data, int length,
                                  void* buffer, int bufferSize, int timeout, int retries, int receive,
                                  unsigned short task);

// Called by the runtime when a cycle of a block begins on this thread. afterFault: the cycle before ended in
// a fault. Applies to the first request of this thread, or until the next call.
DORVEL_HOST_API void NLBeginCycle(bool afterFault);

// A second call does nothing. A socket whose last request got no answer leaves its port, as above.
DORVEL_HOST_API void NLCloseSocket(NLSocket* socket);
