#include "OctetWriter.h"

namespace standard {

void OctetWriter::bigEndian(std::uint64_t value, std::size_t count) {
    while (count-- > 0) {
        u8(static_cast<std::uint8_t>(value >> (8 * count)));
    }
}

void OctetWriter::append(Octets const& octets, std::size_t from, std::size_t to) {
    m_octets.insert(m_octets.end(), octets.begin() + static_cast<std::ptrdiff_t>(from),
                    octets.begin() + static_cast<std::ptrdiff_t>(to));
}

}  // namespace standard
