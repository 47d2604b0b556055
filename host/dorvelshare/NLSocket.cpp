#include "dorvelshare/NLSocket.h"

#include <arpa/inet.h>

#include "dorvelshare/HostEnvironment.h"
#include "dorvelshare/Trace.h"

using dorvel::Environment;

namespace {

constexpr int TraceInfo = 0x04;

bool OpenOn(NLSocket& socket, unsigned short port) {
    int const handle = Environment().Open(port);
    if (handle < 0) {
        return false;
    }
    socket.open = 1;
    socket.handle = handle;
    socket.port = Environment().LocalPort(handle);
    return true;
}

bool SendTo(NLSocket const& socket, sockaddr_in const* peer, void const* data, int length,
            unsigned short task) {
    if (!data && length == 0) {
        return true;
    }
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
    for (int i = 0; i < count && port + i <= 0xFFFF; ++i) {
        if (OpenOn(*socket, static_cast<unsigned short>(port + i))) {
            return 0;
        }
    }
    return -1;
}

int NLSendReceive(NLSocket* socket, sockaddr_in* peer, void const* data, int length, void* buffer,
                  int bufferSize, int timeout, int retries, int receive, unsigned short task) {
    if (socket->open == 0 && !OpenOn(*socket, 0)) {
        return -1;
    }
    for (int attempt = 0; attempt == 0 || attempt <= retries; ++attempt) {
        if (!SendTo(*socket, peer, data, length, task)) {
            return -1;
        }
        if (receive == 0 || !buffer || bufferSize <= 0) {
            return 0;
        }
        sockaddr_in sender{};
        int const received = Environment().Receive(socket->handle, sender, buffer, bufferSize, timeout);
        if (received >= 0) {
            return received;
        }
    }
    return 0;
}

void NLCloseSocket(NLSocket* socket) {
    if (socket->open != 0) {
        Environment().Close(socket->handle);
    }
    socket->open = 0;
    socket->handle = -1;
}
