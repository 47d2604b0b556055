#pragma once

#include <cstddef>
#include <cstdint>

#include "Octets.h"

namespace standard {

// Takes numbers from the front of a sequence of octets and never reads past its end: what is missing
// throws EndOfOctets. The sequence must outlive the reader.
class OctetReader {
public:
    explicit OctetReader(Octets const& octets) : OctetReader(octets, 0) {}
    OctetReader(Octets const& octets, std::size_t position) : m_octets(octets), m_position(position) {}

    std::uint8_t u8();
    std::uint16_t u16() { return static_cast<std::uint16_t>(bigEndian(2)); }
    std::uint32_t u32() { return static_cast<std::uint32_t>(bigEndian(4)); }
    // An unsigned number of `count` octets, 0 to 8.
    std::uint64_t bigEndian(std::size_t count);
    Octets take(std::size_t count);
    // All that is left.
    Octets rest() { return take(left()); }
    // The next octet, which stays where it is.
    std::uint8_t peek() const;

    std::size_t position() const { return m_position; }
    // Back to a position that this reader had before.
    void rewind(std::size_t position) { m_position = position; }
    std::size_t left() const { return m_octets.size() - m_position; }
    bool atEnd() const { return left() == 0; }

private:
    void need(std::size_t count) const;

    Octets const& m_octets;
    std::size_t m_position;
};

// A message ends before all that it promises has come.
class EndOfOctets {};

}  // namespace standard
