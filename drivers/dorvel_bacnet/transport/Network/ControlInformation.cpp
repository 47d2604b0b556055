#include "Network/ControlInformation.h"

#include "UsualMessage.h"

namespace Network {

namespace {

void Append(std::vector<char>& octets, Address const& address) {
    std::vector<char> const group = address.GetBytes();
    octets.insert(octets.end(), group.begin(), group.end());
}

}  // namespace

std::vector<char> ControlInformation::GetBytes() const {
    std::uint32_t const control = priority | (isNetworkMessage ? NetworkMessageBit : 0u) |
                                  (hasDestination ? DestinationBit : 0u) | (hasSource ? SourceBit : 0u) |
                                  (expectingReply ? ExpectingReplyBit : 0u);
    std::vector<char> octets;
    octets.reserve(UsualMessage);
    octets.push_back(static_cast<char>(ProtocolVersion));
    octets.push_back(static_cast<char>(control & 0xFF));
    if (hasDestination) {
        Append(octets, destination);
    }
    if (hasSource) {
        Append(octets, source);
    }
    if (hasDestination) {
        octets.push_back(static_cast<char>(hopCount));
    }
    return octets;
}

}  // namespace Network
