#include "OctetWriter.h"

namespace standard {

void OctetWriter::BigEndian(std::uint64_t value, std::size_t count) {
    while (count-- > 0) {
        U8(static_cast<std::uint8_t>(value >> (8 * count)));
    }
}

void OctetWriter::Append(Octets const& sequence, std::size_t from, std::size_t to) {
    octets.insert(octets.end(), sequence.begin() + static_cast<std::ptrdiff_t>(from),
                  sequence.begin() + static_cast<std::ptrdiff_t>(to));
}

}  // namespace standard
