#include "Network/Address.h"

#include "BitConverter.h"

namespace Network {

std::vector<char> Address::GetBytes() const {
    std::vector<char> octets = BitConverter::GetBytes(network);
    octets.push_back(static_cast<char>(bytes.size() & 0xFF));
    octets.insert(octets.end(), bytes.begin(), bytes.end());
    return octets;
}

}  // namespace Network
