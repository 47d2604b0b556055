#include "UdpSocket.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <system_error>
#include <utility>

namespace simulator {

namespace {

constexpr std::size_t kLongestDatagram = 65536;

sockaddr_in toSystem(Endpoint const& endpoint) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(endpoint.port);
    address.sin_addr.s_addr = htonl(endpoint.address);
    return address;
}

Endpoint fromSystem(sockaddr_in const& address) {
    return {ntohl(address.sin_addr.s_addr), ntohs(address.sin_port)};
}

}  // namespace

UdpSocket::UdpSocket(Endpoint const& local) : m_handle(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in const address = toSystem(local);
    if (m_handle < 0 || bind(m_handle, reinterpret_cast<sockaddr const*>(&address), sizeof address) != 0) {
        std::error_code const code(errno, std::generic_category());
        if (m_handle >= 0) {
            close(m_handle);
        }
        throw std::system_error(code, local.text());
    }
}

UdpSocket::~UdpSocket() {
    if (m_handle >= 0) {
        close(m_handle);
    }
}

UdpSocket::UdpSocket(UdpSocket&& other) noexcept : m_handle(std::exchange(other.m_handle, -1)) {}

Endpoint UdpSocket::local() const {
    sockaddr_in address{};
    socklen_t length = sizeof address;
    getsockname(m_handle, reinterpret_cast<sockaddr*>(&address), &length);
    return fromSystem(address);
}

std::optional<Datagram> UdpSocket::receive() {
    std::array<char, kLongestDatagram> buffer;
    sockaddr_in address{};
    socklen_t length = sizeof address;
    ssize_t const count = recvfrom(m_handle, buffer.data(), buffer.size(), MSG_DONTWAIT,
                                   reinterpret_cast<sockaddr*>(&address), &length);
    if (count < 0) {
        return std::nullopt;
    }
    return Datagram{fromSystem(address), Octets(buffer.begin(), buffer.begin() + count)};
}

void UdpSocket::send(Datagram const& datagram) {
    sockaddr_in const address = toSystem(datagram.peer);
    if (sendto(m_handle, datagram.octets.data(), datagram.octets.size(), 0,
               reinterpret_cast<sockaddr const*>(&address), sizeof address) < 0) {
        return;
    }
}

}  // namespace simulator
