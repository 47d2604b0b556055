#include "VirtualDataLink/Framing.h"

#include <stdexcept>
#include <utility>

#include "VirtualDataLink/ControlInformation.h"
#include "VirtualDataLink/ProtocolMessage.h"

namespace VirtualDataLink {

Packet Frame(DuRequest request) {
    ProtocolMessage message;
    message.controlInformation.function =
        request.address.IsBroadCast() ? OriginalBroadcastNpdu : OriginalUnicastNpdu;
    message.controlInformation.length = static_cast<unsigned short>(request.data.size() + HeaderSize);
    message.data = std::move(request.data);

    Packet packet;
    packet.address.port = request.address.GetPort();
    packet.address.address = request.address.GetAddress();
    packet.data = message.GetBytes();
    return packet;
}

std::optional<std::vector<char>> Unframe(std::vector<char> const& datagram) {
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
    return std::vector<char>(datagram.begin() + HeaderSize, datagram.end());
}

}  // namespace VirtualDataLink
