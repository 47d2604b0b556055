#include "OctetReader.h"

namespace standard {

std::uint8_t OctetReader::U8() {
    return static_cast<std::uint8_t>(BigEndian(1));
}

std::uint64_t OctetReader::BigEndian(std::size_t count) {
    Need(count);
    std::uint64_t value = 0;
    while (count-- > 0) {
        value = value << 8 | OctetValue(octets[position++]);
    }
    return value;
}

Octets OctetReader::Take(std::size_t count) {
    Need(count);
    auto const first = octets.begin() + static_cast<std::ptrdiff_t>(position);
    position += count;
    return Octets(first, first + static_cast<std::ptrdiff_t>(count));
}

std::uint8_t OctetReader::Peek() const {
    Need(1);
    return static_cast<std::uint8_t>(OctetValue(octets[position]));
}

void OctetReader::Need(std::size_t count) const {
    if (count > Left()) {
        throw EndOfOctets();
    }
}

}  // namespace standard
