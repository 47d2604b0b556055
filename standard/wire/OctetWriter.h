#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "OctetVector.h"

namespace standard {

// Appends numbers to a sequence of octets, most significant octet first.
class OctetWriter {
public:
    void U8(std::uint8_t value) { octets.push_back(static_cast<char>(value)); }
    void U16(std::uint16_t value) { BigEndian(value, 2); }
    void U32(std::uint32_t value) { BigEndian(value, 4); }
    // The low `count` octets of the value; count is 1 to 8.
    void BigEndian(std::uint64_t value, std::size_t count);
    void Append(Octets const& sequence) { Append(sequence, 0, sequence.size()); }
    // The octets from index `from` up to, not including, `to`, which must both lie within the sequence.
    void Append(Octets const& sequence, std::size_t from, std::size_t to);

    std::size_t size() const { return octets.size(); }
    Octets const& GetOctets() const { return octets; }
    Octets Take() { return std::move(octets); }

private:
    Octets octets;
};

}  // namespace standard
