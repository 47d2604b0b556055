#include "VirtualDataLink/ControlInformation.h"

namespace VirtualDataLink {

std::vector<char> ControlInformation::GetBytes() const {
    auto const octets = Octets();
    return {octets.begin(), octets.end()};
}

std::array<char, HeaderSize> ControlInformation::Octets() const {
    return {static_cast<char>(BvlcType), static_cast<char>(function), static_cast<char>((length >> 4) & 0xF0),
            static_cast<char>(length & 0xFF)};
}

}  // namespace VirtualDataLink
