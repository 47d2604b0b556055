#include "dorvelshare/NLSocket.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <utility>

#include "LeftPorts.h"
#include "dorvelshare/HostEnvironment.h"
#include "dorvelshare/Trace.h"

using dorvel::Environment;

namespace {

constexpr int TraceInfo = 0x04;

// In units of HostEnvironment::SteadyNow. A datagram that waits in a socket which has been unused for this
// long belongs to an earlier exchange.
constexpr long long IdleTime = 200'000;
// The limit of datagrams that one request drops, so that a flood does not block it.
constexpr int MostDropped = 256;
constexpr int LongestDatagram = 1500;

// Set by NLBeginCycle for the cycle of this thread, until its first request.
thread_local bool isCycleAfterFault = false;

// port is 0 where the environment has chosen one.
void Adopt(NLSocket& socket, int handle, unsigned short port) {
    socket.open = 1;
    socket.unanswered = 0;
    socket.handle = handle;
    socket.port = port != 0 ? port : Environment().LocalPort(handle);
    socket.lastUse = Environment().SteadyNow();
}

bool IsLeft(unsigned short port) {
    return dorvel::TheLeftPorts().Has(port, Environment().SteadyNow());
}

// Opens the socket on any free port, if possible not on one that was just left. Unwanted sockets stay open
// meanwhile, so that the environment chooses another port.
bool OpenAnywhere(NLSocket& socket) {
    constexpr int tries = 3;
    std::array<int, tries> unwanted{};
    int count = 0;
    int handle = Environment().Open(0);
    while (handle >= 0 && count < tries && IsLeft(Environment().LocalPort(handle))) {
        int const another = Environment().Open(0);
        if (another < 0) {
            break;
        }
        unwanted[static_cast<std::size_t>(count++)] = std::exchange(handle, another);
    }
    std::for_each(unwanted.begin(), unwanted.begin() + count, [](int one) { Environment().Close(one); });
    if (handle < 0) {
        return false;
    }
    Adopt(socket, handle, 0);
    return true;
}

// Opens the socket on the first free port of its range, from a position on and around the end. False if none
// is free.
bool OpenInRange(NLSocket& socket, int position, bool takesLeftPorts) {
    for (int step = 0; step < socket.portCount; ++step) {
        auto const port =
            static_cast<unsigned short>(socket.firstPort + (position + step) % socket.portCount);
        int const handle = takesLeftPorts || !IsLeft(port) ? Environment().Open(port) : -1;
        if (handle >= 0) {
            Adopt(socket, handle, port);
            return true;
        }
    }
    return false;
}

void Leave(NLSocket const& socket) {
    dorvel::TheLeftPorts().Add(socket.port, Environment().SteadyNow());
    Environment().Close(socket.handle);
}

// The old port stays open during the search, so the new one differs.
void ChangePort(NLSocket& socket) {
    NLSocket const before = socket;
    int const position = std::max(socket.port - socket.firstPort, 0) + 1;
    if (OpenInRange(socket, position, false) || OpenAnywhere(socket)) {
        Leave(before);
    }
}

int ReceiveFrom(NLSocket const& socket, void* buffer, int bufferSize, int timeout) {
    sockaddr_in sender{};
    return Environment().Receive(socket.handle, sender, buffer, bufferSize, timeout);
}

void DropWaiting(NLSocket const& socket, unsigned short task) {
    char datagram[LongestDatagram];
    int dropped = 0;
    while (dropped < MostDropped && ReceiveFrom(socket, datagram, sizeof datagram, 0) >= 0) {
        ++dropped;
    }
    if (dropped > 0) {
        OpcUa_Trace_Imp(TraceInfo, __FILE__, __LINE__, "task %u: datagrams dropped before the request: %d",
                        task, dropped);
    }
}

// Keeps the answers to earlier requests away from the next one. Waiting datagrams are received even where the
// port is left, so that captures show them.
void LeaveOldAnswers(NLSocket& socket, bool isAfterFault, unsigned short task) {
    if (Environment().SteadyNow() - socket.lastUse >= IdleTime) {
        DropWaiting(socket, task);
    }
    if (socket.unanswered != 0 || isAfterFault) {
        ChangePort(socket);
    }
}

bool SendTo(NLSocket const& socket, sockaddr_in const* peer, void const* data, int length,
            unsigned short task) {
    if (!data || !peer || length < 0 || !Environment().Send(socket.handle, *peer, data, length)) {
        OpcUa_Trace_Imp(TraceInfo, __FILE__, __LINE__, "task %u: %d octets could not be sent", task, length);
        return false;
    }
    return true;
}

}  // namespace

void NLInitSocket(NLSocket* socket) {
    *socket = NLSocket{};
    socket->port = NLBasePort;
    socket->handle = -1;
}

void NLMakeAddress(sockaddr_in* target, unsigned int address, unsigned short port) {
    *target = sockaddr_in{};
    target->sin_family = AF_INET;
    target->sin_addr.s_addr = htonl(address);
    target->sin_port = htons(port);
}

unsigned int IPAddressFromString(char const* text) {
    in_addr address{};
    return text && ::inet_pton(AF_INET, text, &address) == 1 ? ntohl(address.s_addr) : 0;
}

int NLTryOpenUDPSocket(NLSocket* socket, unsigned short port, int count) {
    NLCloseSocket(socket);
    socket->firstPort = port;
    socket->portCount = static_cast<unsigned short>(std::clamp(count, 0, std::min(0x10000 - port, 0xFFFF)));
    if (OpenInRange(*socket, 0, false) || OpenInRange(*socket, 0, true)) {
        return 0;
    }
    socket->portCount = 0;
    return -1;
}

int NLSendReceive(NLSocket* socket, sockaddr_in* peer, void const* data, int length, void* buffer,
                  int bufferSize, int timeout, int retries, int receive, unsigned short task) {
    bool const sends = data || length != 0;
    bool const receives = receive != 0 && buffer && bufferSize > 0;
    bool const isAfterFault = sends && std::exchange(isCycleAfterFault, false);
    if (socket->open != 0 && sends) {
        LeaveOldAnswers(*socket, isAfterFault, task);
    }
    if (socket->open == 0 && !OpenAnywhere(*socket)) {
        return -1;
    }
    bool hasLeft = true;
    int received = -1;  // nothing has come
    for (int left = receives ? std::max(retries, 0) : 0; hasLeft && received < 0 && left >= 0; --left) {
        hasLeft = !sends || SendTo(*socket, peer, data, length, task);
        if (hasLeft && receives) {
            received = ReceiveFrom(*socket, buffer, bufferSize, timeout);
        }
    }
    if (sends) {
        socket->unanswered = receives && received <= 0 ? 1 : 0;
    }
    socket->lastUse = Environment().SteadyNow();
    return hasLeft ? std::max(received, 0) : -1;
}

void NLBeginCycle(bool afterFault) {
    isCycleAfterFault = afterFault;
}

void NLCloseSocket(NLSocket* socket) {
    if (socket->unanswered != 0) {
        Leave(*socket);
    } else if (socket->open != 0) {
        Environment().Close(socket->handle);
    }
    socket->open = 0;
    socket->unanswered = 0;
    socket->handle = -1;
    socket->portCount = 0;
}
