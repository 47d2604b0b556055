#include "VirtualDataLink/ProtocolMessage.h"

namespace VirtualDataLink {

std::vector<char> ProtocolMessage::GetBytes() const {
    std::vector<char> bytes = controlInformation.GetBytes();
    bytes.insert(bytes.end(), data.begin(), data.end());
    return bytes;
}

}  // namespace VirtualDataLink
