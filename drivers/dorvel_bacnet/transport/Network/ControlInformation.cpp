#include "Network/ControlInformation.h"

#include "Octets.h"
#include "UsualMessage.h"

namespace Network {

std::vector<char> ControlInformation::GetBytes() const {
    std::uint32_t const control = priority | (isNetworkMessage ? NetworkMessageBit : 0u) |
                                  (hasDestination ? DestinationBit : 0u) | (hasSource ? SourceBit : 0u) |
                                  (expectingReply ? ExpectingReplyBit : 0u);
    std::vector<char> octets;
    octets.reserve(UsualMessage);
    octets.push_back(static_cast<char>(ProtocolVersion));
    octets.push_back(static_cast<char>(control & 0xFF));
    if (hasDestination) {
        AppendOctets(octets, destination.GetBytes());
    }
    if (hasSource) {
        AppendOctets(octets, source.GetBytes());
    }
    if (hasDestination) {
        octets.push_back(static_cast<char>(hopCount));
    }
    return octets;
}

}  // namespace Network
