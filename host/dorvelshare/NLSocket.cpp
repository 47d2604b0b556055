#include "dorvelshare/NLSocket.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <algorithm>

#include "dorvelshare/HostEnvironment.h"
#include "dorvelshare/Trace.h"

using dorvel::Environment;

namespace {

constexpr int TraceInfo = 0x04;

// Units of HostEnvironment::SteadyNow. A device answers within an exchange, or the exchange is given up: what
// waits in a socket that nobody has used for so long belongs to an earlier one.
constexpr long long IdleTime = 200'000;
// Datagrams that one request drops, so that a flood does not hold it.
constexpr int MostDropped = 256;
constexpr int LongestDatagram = 1500;

// What NLBeginCycle said of the cycle that this thread runs, until its first request.
thread_local bool isAfterFault = false;

void Adopt(NLSocket& socket, int handle) {
    socket.open = 1;
    socket.unanswered = 0;
    socket.handle = handle;
    socket.port = Environment().LocalPort(handle);
    socket.lastUse = Environment().SteadyNow();
}

bool OpenOn(NLSocket& socket, unsigned short port) {
    int const handle = Environment().Open(port);
    if (handle < 0) {
        return false;
    }
    Adopt(socket, handle);
    return true;
}

// Opens a second socket on another port than the present one; -1 if there is none. A port of the range that
// was left is taken again last, when its late answers have come.
int OpenElsewhere(NLSocket const& socket) {
    int const current = socket.port - socket.firstPort;
    for (int step = 1; step <= socket.portCount; ++step) {
        int const offset = (std::max(current, 0) + step) % socket.portCount;
        int const handle = Environment().Open(static_cast<unsigned short>(socket.firstPort + offset));
        if (handle >= 0) {
            return handle;
        }
    }
    return Environment().Open(0);
}

void ChangePort(NLSocket& socket) {
    int const handle = OpenElsewhere(socket);
    if (handle >= 0) {
        Environment().Close(socket.handle);
        Adopt(socket, handle);
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

// Keeps the answers to earlier requests away from the one that is about to be sent.
void LeaveOldAnswers(NLSocket& socket, unsigned short task) {
    if (Environment().SteadyNow() - socket.lastUse >= IdleTime) {
        DropWaiting(socket, task);
    }
    if (socket.unanswered != 0 || isAfterFault) {
        ChangePort(socket);
    }
    isAfterFault = false;
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
    int const inRange = std::min(count, 0x10000 - port);
    for (int i = 0; i < inRange; ++i) {
        if (OpenOn(*socket, static_cast<unsigned short>(port + i))) {
            socket->firstPort = port;
            socket->portCount = static_cast<unsigned short>(std::min(inRange, 0xFFFF));
            return 0;
        }
    }
    return -1;
}

int NLSendReceive(NLSocket* socket, sockaddr_in* peer, void const* data, int length, void* buffer,
                  int bufferSize, int timeout, int retries, int receive, unsigned short task) {
    bool const sends = data || length != 0;
    bool const receives = receive != 0 && buffer && bufferSize > 0;
    if (socket->open != 0 && sends) {
        LeaveOldAnswers(*socket, task);
    }
    if (socket->open == 0 && !OpenOn(*socket, 0)) {
        return -1;
    }
    int result = -1;
    for (int left = std::max(retries, 0); result < 0 && left >= 0; --left) {
        if (sends && !SendTo(*socket, peer, data, length, task)) {
            break;
        }
        int const received = receives ? ReceiveFrom(*socket, buffer, bufferSize, timeout) : 0;
        result = left == 0 ? std::max(received, 0) : received;
    }
    if (sends) {
        socket->unanswered = receives && result <= 0;
    }
    socket->lastUse = Environment().SteadyNow();
    return result;
}

void NLBeginCycle(bool afterFault) {
    isAfterFault = afterFault;
}

void NLCloseSocket(NLSocket* socket) {
    if (socket->open != 0) {
        Environment().Close(socket->handle);
    }
    socket->open = 0;
    socket->handle = -1;
    socket->portCount = 0;
}
