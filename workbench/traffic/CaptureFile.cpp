#include "CaptureFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace workbench {

namespace {

constexpr std::size_t IpHeaderLength = 20;
constexpr std::size_t UdpHeaderLength = 8;
constexpr int LargestData = 65535 - 20 - 8;
constexpr std::uint32_t LinkTypeRaw = 101;
constexpr long long UnixEpoch = 116444736000000000LL;  // 1 January 1970 as a file time
constexpr char UdpProtocol = 17;

void PutLittle(Octets& octets, std::uint32_t value, int width) {
    for (int i = 0; i < width; ++i) {
        octets.push_back(static_cast<char>(value >> (8 * i)));
    }
}

void SetBig16(Octets& octets, std::size_t position, std::uint32_t value) {
    octets[position] = static_cast<char>(value >> 8);
    octets[position + 1] = static_cast<char>(value);
}

void PutBig16(Octets& octets, std::uint32_t value) {
    octets.resize(octets.size() + 2);
    SetBig16(octets, octets.size() - 2, value);
}

// Appends a value that is in network byte order already.
template <typename Value>
void PutRaw(Octets& octets, Value const& value) {
    char const* const first = reinterpret_cast<char const*>(&value);
    octets.insert(octets.end(), first, first + sizeof value);
}

// RFC 1071: the ones' complement of the ones' complement sum of 16-bit words.
std::uint16_t Checksum(Octets const& octets) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < octets.size(); ++i) {
        std::uint32_t const octet = standard::OctetValue(octets[i]);
        sum += i % 2 == 0 ? octet << 8 : octet;
        sum = (sum & 0xFFFF) + (sum >> 16);
    }
    return static_cast<std::uint16_t>(~sum);
}

Octets IpHeader(sockaddr_in const& from, sockaddr_in const& to, std::size_t udpLength,
                unsigned short identification) {
    Octets header = {0x45, 0x00};
    PutBig16(header, static_cast<std::uint32_t>(IpHeaderLength + udpLength));
    PutBig16(header, identification);
    PutBig16(header, 0x4000);  // don't fragment
    header.push_back(64);
    header.push_back(UdpProtocol);
    PutBig16(header, 0);
    PutRaw(header, from.sin_addr.s_addr);
    PutRaw(header, to.sin_addr.s_addr);
    SetBig16(header, 10, Checksum(header));
    return header;
}

Octets UdpDatagram(sockaddr_in const& from, sockaddr_in const& to, char const* data, std::size_t length) {
    std::uint32_t const udpLength = static_cast<std::uint32_t>(UdpHeaderLength + length);
    Octets datagram;
    PutRaw(datagram, from.sin_port);
    PutRaw(datagram, to.sin_port);
    PutBig16(datagram, udpLength);
    PutBig16(datagram, 0);
    datagram.insert(datagram.end(), data, data + length);

    Octets pseudo;  // RFC 768: the checksum covers the addresses too
    PutRaw(pseudo, from.sin_addr.s_addr);
    PutRaw(pseudo, to.sin_addr.s_addr);
    PutBig16(pseudo, UdpProtocol);
    PutBig16(pseudo, udpLength);
    pseudo.insert(pseudo.end(), datagram.begin(), datagram.end());
    std::uint16_t const checksum = Checksum(pseudo);
    SetBig16(datagram, 6, checksum == 0 ? 0xFFFF : checksum);  // 0 means that there is no checksum
    return datagram;
}

}  // namespace

Octets CaptureHeader() {
    Octets header;
    PutLittle(header, 0xA1B2C3D4u, 4);
    PutLittle(header, 2, 2);
    PutLittle(header, 4, 2);
    PutLittle(header, 0, 4);  // times are UTC
    PutLittle(header, 0, 4);
    PutLittle(header, 65535, 4);
    PutLittle(header, LinkTypeRaw, 4);
    return header;
}

Octets CaptureRecord(sockaddr_in const& from, sockaddr_in const& to, void const* data, int length,
                     long long fileTime, unsigned short identification) {
    std::size_t const count = static_cast<std::size_t>(std::clamp(length, 0, LargestData));
    Octets const datagram = UdpDatagram(from, to, static_cast<char const*>(data), count);
    Octets const header = IpHeader(from, to, datagram.size(), identification);
    std::uint32_t const total = static_cast<std::uint32_t>(header.size() + datagram.size());
    long long const microseconds = std::max(0LL, (fileTime - UnixEpoch) / 10);

    Octets record;
    PutLittle(record, static_cast<std::uint32_t>(microseconds / 1000000), 4);
    PutLittle(record, static_cast<std::uint32_t>(microseconds % 1000000), 4);
    PutLittle(record, total, 4);
    PutLittle(record, total, 4);
    record.insert(record.end(), header.begin(), header.end());
    record.insert(record.end(), datagram.begin(), datagram.end());
    return record;
}

}  // namespace workbench
