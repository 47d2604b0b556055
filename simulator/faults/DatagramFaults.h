#pragma once

#include <optional>

#include "Fault.h"
#include "OctetVector.h"
#include "Standard.h"

// Faults of datagrams that the station sends, each an Original-Unicast-NPDU. If an earlier fault has removed
// the octets that a fault changes, the datagram does not change.
namespace simulator::datagrams {

// The index of the APDU, or the length of the datagram if it has none.
std::size_t ApduAt(Octets const& datagram);

// The invoke id of the APDU of an answer.
std::optional<std::uint8_t> InvokeId(Octets const& datagram);

// The sequence number of a segment of a ComplexACK.
std::optional<std::uint8_t> SequenceNumber(Octets const& datagram);

// Applies the kinds that only change octets of each datagram: OtherInvokeId, Truncate, BvlcFunction,
// BvlcType, BvlcLength, HeadersOnly. Any other kind changes nothing.
void Spoil(Fault const& fault, Octets& datagram);

// A ComplexACK as the first segment of a longer one. No value for any other datagram.
std::optional<Octets> FirstSegment(Octets const& datagram);

// The segment with another sequence number.
Octets Renumbered(Octets segment, std::uint8_t sequenceNumber);

}  // namespace simulator::datagrams
