#include "VirtualDataLink/ControlInformation.h"

#include "UsualMessage.h"

namespace VirtualDataLink {

std::vector<char> ControlInformation::GetBytes() const {
    std::vector<char> octets;
    octets.reserve(UsualMessage);
    octets.push_back(static_cast<char>(BvlcType));
    octets.push_back(static_cast<char>(function));
    octets.push_back(static_cast<char>((length >> 4) & 0xF0));
    octets.push_back(static_cast<char>(length & 0xFF));
    return octets;
}

}  // namespace VirtualDataLink
