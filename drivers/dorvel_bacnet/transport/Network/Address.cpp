#include "Network/Address.h"

#include "BitConverter.h"
#include "Octets.h"

namespace Network {

std::vector<char> Address::GetBytes() const {
    std::vector<char> octets = BitConverter::GetBytes(network);
    octets.push_back(static_cast<char>(bytes.size() & 0xFF));
    AppendOctets(octets, bytes);
    return octets;
}

}  // namespace Network
