#include "UdpSocket.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
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

bool SetOption(int handle, int option, void const* value, std::size_t size) {
    return setsockopt(handle, SOL_SOCKET, option, value, static_cast<socklen_t>(size)) == 0;
}

bool SetOptions(int handle, UdpOptions const& options) {
    int const on = 1;
    std::string const interfaceName = options.interfaceName.substr(0, options.interfaceName.find(':'));
    return (!options.sendsBroadcasts || SetOption(handle, SO_BROADCAST, &on, sizeof on)) &&
           (!options.sharesPort || SetOption(handle, SO_REUSEADDR, &on, sizeof on)) &&
           (interfaceName.empty() ||
            SetOption(handle, SO_BINDTODEVICE, interfaceName.c_str(), interfaceName.size() + 1));
}

bool Bind(int handle, Endpoint const& local) {
    sockaddr_in const address = ToSystem(local);
    return bind(handle, reinterpret_cast<sockaddr const*>(&address), sizeof address) == 0;
}

std::error_code LastError() {
    return {errno, std::generic_category()};
}

}  // namespace

UdpSocket::UdpSocket(Endpoint const& local, UdpOptions const& options)
    : handle(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    if (handle < 0 || !SetOptions(handle, options) || !Bind(handle, local)) {
        std::error_code const code = LastError();
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

std::error_code UdpSocket::Send(Datagram const& datagram) {
    sockaddr_in const address = ToSystem(datagram.peer);
    bool const isSent = sendto(handle, datagram.octets.data(), datagram.octets.size(), 0,
                               reinterpret_cast<sockaddr const*>(&address), sizeof address) >= 0;
    return isSent ? std::error_code() : LastError();
}

std::optional<std::uint32_t> LocalAddressTowards(std::uint32_t destination) {
    constexpr std::uint16_t discardPort = 9;  // nothing is sent to it
    try {
        UdpOptions options;
        options.sendsBroadcasts = true;
        UdpSocket const probe({0, 0}, options);
        sockaddr_in const address = ToSystem({destination, discardPort});
        bool const hasRoute =
            connect(probe.Handle(), reinterpret_cast<sockaddr const*>(&address), sizeof address) == 0;
        return hasRoute ? std::optional<std::uint32_t>(probe.Local().address) : std::nullopt;
    } catch (std::system_error const&) {
        return std::nullopt;
    }
}

}  // namespace standard
