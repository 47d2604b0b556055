#include "VmacAddress.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "BitConverter.h"

namespace {

constexpr std::size_t AddressPlace = 0;
constexpr std::size_t AddressSize = 4;
constexpr std::size_t PortPlace = 4;
constexpr std::size_t PortSize = 2;
constexpr std::size_t FullSize = AddressSize + PortSize;

// The octets from an index on as a number. Missing octets are zero.
unsigned int Field(std::vector<char> const& bytes, std::size_t place, std::size_t size) {
    unsigned int number = 0;
    for (std::size_t i = place; i < place + size; ++i) {
        number = number << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u);
    }
    return number;
}

void SetField(std::vector<char>& bytes, std::size_t place, std::vector<char> const& field) {
    bytes.resize(std::max(bytes.size(), FullSize));
    std::copy(field.begin(), field.end(), bytes.begin() + static_cast<std::ptrdiff_t>(place));
}

}  // namespace

VmacAddress::VmacAddress(bool isBroadcast) : bytes(FullSize), broadcast(isBroadcast) {}

VmacAddress::VmacAddress(std::vector<char> octets, bool isBroadcast)
    : bytes(std::move(octets)), broadcast(isBroadcast) {}

VmacAddress& VmacAddress::operator=(VmacAddress const& other) {
    bytes = other.bytes;
    return *this;
}

unsigned short VmacAddress::GetPort() const {
    return static_cast<unsigned short>(Field(bytes, PortPlace, PortSize));
}

unsigned int VmacAddress::GetAddress() const {
    return Field(bytes, AddressPlace, AddressSize);
}

void VmacAddress::SetPort(unsigned short port) {
    SetField(bytes, PortPlace, BitConverter::GetBytes(port));
}

void VmacAddress::SetAddress(unsigned int address) {
    SetField(bytes, AddressPlace, BitConverter::GetBytes(address));
}
