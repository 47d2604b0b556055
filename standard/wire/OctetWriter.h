#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "Octets.h"

namespace standard {

// Appends numbers to a sequence of octets, most significant octet first (clause 20.1.2).
class OctetWriter {
public:
    void u8(std::uint8_t value) { m_octets.push_back(static_cast<char>(value)); }
    void u16(std::uint16_t value) { bigEndian(value, 2); }
    void u32(std::uint32_t value) { bigEndian(value, 4); }
    // The low `count` octets of the value; count is 1 to 8.
    void bigEndian(std::uint64_t value, std::size_t count);
    void append(Octets const& octets) { append(octets, 0, octets.size()); }
    // The octets from `from` up to, not including, `to`; both lie within the sequence.
    void append(Octets const& octets, std::size_t from, std::size_t to);

    std::size_t size() const { return m_octets.size(); }
    Octets const& octets() const { return m_octets; }
    Octets take() { return std::move(m_octets); }

private:
    Octets m_octets;
};

}  // namespace standard
