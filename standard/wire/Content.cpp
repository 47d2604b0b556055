#include "Content.h"

#include <cstring>

#include "OctetWriter.h"

namespace standard::content {

namespace {

Octets BigEndian(std::uint64_t value, std::size_t count) {
    OctetWriter writer;
    writer.BigEndian(value, count);
    return writer.Take();
}

Octets Four(std::array<std::uint8_t, 4> const& values) {
    return Octets(values.begin(), values.end());
}

}  // namespace

Octets UnsignedNumber(std::uint64_t value) {
    std::size_t count = 1;
    while (count < 8 && value >> (8 * count) != 0) {
        ++count;
    }
    return BigEndian(value, count);
}

Octets SignedNumber(std::int64_t value) {
    // The sign bit must fit too: a negative number is as wide as its complement.
    auto const folded = static_cast<std::uint64_t>(value < 0 ? ~value : value);
    std::size_t count = 1;
    while (count < 8 && folded >> (8 * count - 1) != 0) {
        ++count;
    }
    return BigEndian(static_cast<std::uint64_t>(value), count);
}

Octets Real(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return BigEndian(bits, sizeof bits);
}

Octets DoubleNumber(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return BigEndian(bits, sizeof bits);
}

Octets CharacterString(std::string const& text) {
    Octets octets(1, '\0');
    octets.insert(octets.end(), text.begin(), text.end());
    return octets;
}

Octets BitString(std::string const& bits) {
    std::size_t const octetCount = (bits.size() + 7) / 8;
    std::vector<unsigned> packed(octetCount, 0);
    for (std::size_t i = 0; i < bits.size(); ++i) {
        if (bits[i] != '0') {
            packed[i / 8] |= 0x80u >> (i % 8);
        }
    }
    OctetWriter writer;
    writer.U8(static_cast<std::uint8_t>(octetCount * 8 - bits.size()));
    for (unsigned const octet : packed) {
        writer.U8(static_cast<std::uint8_t>(octet));
    }
    return writer.Take();
}

Octets Date(CalendarDate const& value) {
    return Four(value);
}

Octets Time(TimeOfDay const& value) {
    return Four(value);
}

Octets ObjectIdentifier(ObjectId const& value) {
    return BigEndian(value.Encoded(), 4);
}

}  // namespace standard::content
