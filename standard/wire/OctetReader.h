#pragma once

#include <cstddef>
#include <cstdint>

#include "OctetVector.h"

namespace standard {

// Takes numbers from the front of a sequence of octets and never reads past its end: what is missing
// throws EndOfOctets. The sequence must outlive the reader.
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
    // All that is left.
    Octets Rest() { return Take(Left()); }
    // The next octet, which stays where it is.
    std::uint8_t Peek() const;

    std::size_t Position() const { return position; }
    // Back to a position that this reader had before.
    void Rewind(std::size_t earlier) { position = earlier; }
    std::size_t Left() const { return octets.size() - position; }
    bool AtEnd() const { return Left() == 0; }

private:
    void Need(std::size_t count) const;

    Octets const& octets;
    std::size_t position;
};

// A message ends before all that it promises has come.
class EndOfOctets {};

}  // namespace standard
