#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace bench {

[[noreturn]] inline void ThrowSystemError(std::string const& call) {
    throw std::system_error(errno, std::generic_category(), call);
}

inline sockaddr_in LoopbackAddress(unsigned short port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

// Opens a UDP socket on a free port of 127.0.0.1, which the caller closes. Throws std::system_error.
inline int OpenLoopback() {
    int const handle = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (handle < 0) {
        ThrowSystemError("socket");
    }
    sockaddr_in const address = LoopbackAddress(0);
    if (::bind(handle, reinterpret_cast<sockaddr const*>(&address), sizeof address) != 0) {
        int const reason = errno;
        ::close(handle);
        throw std::system_error(reason, std::generic_category(), "bind");
    }
    return handle;
}

// In host byte order. Throws std::system_error.
inline unsigned short LocalPort(int handle) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (::getsockname(handle, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        ThrowSystemError("getsockname");
    }
    return ntohs(address.sin_port);
}

}  // namespace bench
