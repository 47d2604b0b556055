#pragma once

#include <cstddef>
#include <cstdint>

#include "OctetVector.h"

namespace standard {

// Reads numbers from a sequence of octets, which must outlive the reader. Never reads past the end: a read of
// more octets than are left throws EndOfOctets.
class OctetReader {
public:
    explicit OctetReader(Octets const& sequence) : OctetReader(sequence, 0) {}
    OctetReader(Octets const& sequence, std::size_t start) : octets(sequence), position(start) {}

    std::uint8_t U8();
    std::uint16_t U16() { return static_cast<std::uint16_t>(BigEndian(2)); }
    std::uint32_t U32() { return static_cast<std::uint32_t>(BigEndian(4)); }
    // An unsigned number of `count` octets, 0 to 8.
    std::uint64_t BigEndian(std::size_t count);
    Octets Take(std::size_t count);
    // All octets that are left.
    Octets Rest() { return Take(Left()); }
    // The next octet, which is not consumed.
    std::uint8_t Peek() const;

    std::size_t Position() const { return position; }
    // Returns to an earlier position of this reader.
    void Rewind(std::size_t earlier) { position = earlier; }
    std::size_t Left() const { return octets.size() - position; }
    bool AtEnd() const { return Left() == 0; }

private:
    void Need(std::size_t count) const;

    Octets const& octets;
    std::size_t position;
};

// A message ends too early.
class EndOfOctets {};

}  // namespace standard
