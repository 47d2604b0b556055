#pragma once

#include "Hex.h"
#include "dorvelshare/NLSocket.h"

namespace test {

// A socket record with a peer and a buffer, over the current environment. Closes the socket at its end.
class VirtualSocket {
public:
    VirtualSocket() {
        NLInitSocket(&socket);
        NLMakeAddress(&peer, 0x0A000001, 47808);
    }
    ~VirtualSocket() { NLCloseSocket(&socket); }
    VirtualSocket(VirtualSocket const&) = delete;
    VirtualSocket& operator=(VirtualSocket const&) = delete;

    int Exchange(Octets const& request, int timeout, int retries = 0) {
        return NLSendReceive(&socket, &peer, request.data(), static_cast<int>(request.size()), buffer,
                             sizeof buffer, timeout, retries, 1, 7);
    }
    int Wait(int timeout) {
        return NLSendReceive(&socket, &peer, nullptr, 0, buffer, sizeof buffer, timeout, 0, 1, 7);
    }

    NLSocket socket{};
    sockaddr_in peer{};
    char buffer[1500] = {};
};

}  // namespace test
