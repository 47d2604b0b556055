#include "OctetReader.h"

namespace standard {

std::uint8_t OctetReader::u8() {
    return static_cast<std::uint8_t>(bigEndian(1));
}

std::uint64_t OctetReader::bigEndian(std::size_t count) {
    need(count);
    std::uint64_t value = 0;
    while (count-- > 0) {
        value = value << 8 | static_cast<unsigned char>(m_octets[m_position++]);
    }
    return value;
}

Octets OctetReader::take(std::size_t count) {
    need(count);
    auto const first = m_octets.begin() + static_cast<std::ptrdiff_t>(m_position);
    m_position += count;
    return Octets(first, first + static_cast<std::ptrdiff_t>(count));
}

std::uint8_t OctetReader::peek() const {
    need(1);
    return static_cast<unsigned char>(m_octets[m_position]);
}

void OctetReader::need(std::size_t count) const {
    if (count > left()) {
        throw EndOfOctets();
    }
}

}  // namespace standard
