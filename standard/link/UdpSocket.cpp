#include "UdpSocket.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <system_error>
#include <utility>

namespace standard {

namespace {

constexpr std::size_t LongestDatagram = 65536;

sockaddr_in ToSystem(Endpoint const& endpoint) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(endpoint.port);
    address.sin_addr.s_addr = htonl(endpoint.address);
    return address;
}

Endpoint FromSystem(sockaddr_in const& address) {
    return {ntohl(address.sin_addr.s_addr), ntohs(address.sin_port)};
}

}  // namespace

UdpSocket::UdpSocket(Endpoint const& local) : handle(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in const address = ToSystem(local);
    if (handle < 0 || bind(handle, reinterpret_cast<sockaddr const*>(&address), sizeof address) != 0) {
        std::error_code const code(errno, std::generic_category());
        if (handle >= 0) {
            close(handle);
        }
        throw std::system_error(code, local.Text());
    }
}

UdpSocket::~UdpSocket() {
    if (handle >= 0) {
        close(handle);
    }
}

UdpSocket::UdpSocket(UdpSocket&& other) noexcept : handle(std::exchange(other.handle, -1)) {}

Endpoint UdpSocket::Local() const {
    sockaddr_in address{};
    socklen_t length = sizeof address;
    getsockname(handle, reinterpret_cast<sockaddr*>(&address), &length);
    return FromSystem(address);
}

std::optional<Datagram> UdpSocket::Receive() {
    std::array<char, LongestDatagram> buffer;
    sockaddr_in address{};
    socklen_t length = sizeof address;
    ssize_t const count = recvfrom(handle, buffer.data(), buffer.size(), MSG_DONTWAIT,
                                   reinterpret_cast<sockaddr*>(&address), &length);
    if (count < 0) {
        return std::nullopt;
    }
    return Datagram{FromSystem(address), Octets(buffer.begin(), buffer.begin() + count)};
}

void UdpSocket::Send(Datagram const& datagram) {
    sockaddr_in const address = ToSystem(datagram.peer);
    if (sendto(handle, datagram.octets.data(), datagram.octets.size(), 0,
               reinterpret_cast<sockaddr const*>(&address), sizeof address) < 0) {
        return;
    }
}

}  // namespace standard
