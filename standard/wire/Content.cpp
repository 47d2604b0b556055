#include "Content.h"

#include <cstring>

#include "OctetWriter.h"

namespace standard::content {

namespace {

Octets bigEndian(std::uint64_t value, std::size_t count) {
    OctetWriter writer;
    writer.bigEndian(value, count);
    return writer.take();
}

Octets four(std::array<std::uint8_t, 4> const& values) {
    return Octets(values.begin(), values.end());
}

}  // namespace

Octets unsignedNumber(std::uint64_t value) {
    std::size_t count = 1;
    while (count < 8 && value >> (8 * count) != 0) {
        ++count;
    }
    return bigEndian(value, count);
}

Octets signedNumber(std::int64_t value) {
    // The sign's own bit must fit too: fold a negative number onto the positive one of the same width.
    auto const folded = static_cast<std::uint64_t>(value < 0 ? ~value : value);
    std::size_t count = 1;
    while (count < 8 && folded >> (8 * count - 1) != 0) {
        ++count;
    }
    return bigEndian(static_cast<std::uint64_t>(value), count);
}

Octets real(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bigEndian(bits, sizeof bits);
}

Octets doubleNumber(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bigEndian(bits, sizeof bits);
}

Octets characterString(std::string const& text) {
    Octets octets(1, '\0');
    octets.insert(octets.end(), text.begin(), text.end());
    return octets;
}

Octets bitString(std::string const& bits) {
    std::size_t const octetCount = (bits.size() + 7) / 8;
    std::vector<unsigned> packed(octetCount, 0);
    for (std::size_t i = 0; i < bits.size(); ++i) {
        if (bits[i] != '0') {
            packed[i / 8] |= 0x80u >> (i % 8);
        }
    }
    OctetWriter writer;
    writer.u8(static_cast<std::uint8_t>(octetCount * 8 - bits.size()));
    for (unsigned const octet : packed) {
        writer.u8(static_cast<std::uint8_t>(octet));
    }
    return writer.take();
}

Octets date(CalendarDate const& value) {
    return four(value);
}

Octets time(TimeOfDay const& value) {
    return four(value);
}

Octets objectIdentifier(ObjectId const& value) {
    return bigEndian(value.encoded(), 4);
}

}  // namespace standard::content
