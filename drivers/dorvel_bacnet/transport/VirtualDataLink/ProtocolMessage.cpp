#include "VirtualDataLink/ProtocolMessage.h"

#include "Octets.h"

namespace VirtualDataLink {

std::vector<char> ProtocolMessage::GetBytes() const {
    std::vector<char> bytes = controlInformation.GetBytes();
    AppendOctets(bytes, data);
    return bytes;
}

}  // namespace VirtualDataLink
