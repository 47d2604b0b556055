#include "VirtualDataLink/Framing.h"

#include <cstddef>
#include <stdexcept>
#include <utility>

#include "VirtualDataLink/ControlInformation.h"

namespace VirtualDataLink {

std::vector<char> FrameNpdu(bool isBroadcast, std::vector<char> npdu) {
    ControlInformation information;
    information.function = isBroadcast ? OriginalBroadcastNpdu : OriginalUnicastNpdu;
    information.length = static_cast<unsigned short>(npdu.size() + HeaderSize);
    auto const header = information.Octets();
    npdu.insert(npdu.begin(), header.begin(), header.end());
    return npdu;
}

Packet Frame(DuRequest request) {
    Packet packet;
    packet.address.port = request.address.GetPort();
    packet.address.address = request.address.GetAddress();
    packet.data = FrameNpdu(request.address.IsBroadCast(), std::move(request.data));
    return packet;
}

std::optional<std::vector<char>> Unframe(std::vector<char> datagram) {
    if (datagram.size() < HeaderSize || static_cast<unsigned char>(datagram[0]) != BvlcType) {
        throw std::runtime_error("packet format error");
    }
    auto const function = static_cast<unsigned char>(datagram[1]);
    if (function != OriginalUnicastNpdu && function != OriginalBroadcastNpdu) {
        return std::nullopt;
    }
    std::size_t const length = static_cast<std::size_t>(static_cast<unsigned char>(datagram[2])) << 8 |
                               static_cast<unsigned char>(datagram[3]);
    if (length != datagram.size()) {
        throw std::runtime_error("packet size error");
    }
    datagram.erase(datagram.begin(), datagram.begin() + HeaderSize);
    return datagram;
}

}  // namespace VirtualDataLink
