#pragma once

#include <optional>

#include "Fault.h"
#include "OctetVector.h"
#include "Standard.h"

// What faults make of a datagram that the station would send: an Original-Unicast-NPDU. A datagram that
// another fault has spoilt so far that the place to change is missing stays as it is.
namespace simulator::datagrams {

// Where the APDU begins; the datagram's length if there is none.
std::size_t ApduAt(Octets const& datagram);

// The invoke id of the APDU of an answer.
std::optional<std::uint8_t> InvokeId(Octets const& datagram);

// The sequence number of a segment of a ComplexACK.
std::optional<std::uint8_t> SequenceNumber(Octets const& datagram);

// The kinds that change octets of each datagram and nothing else: OtherInvokeId, Truncate, BvlcFunction,
// BvlcType, BvlcLength, HeadersOnly. Any other kind does nothing.
void Spoil(Fault const& fault, Octets& datagram);

// A ComplexACK as the first segment of a longer one; nothing for anything else.
std::optional<Octets> FirstSegment(Octets const& datagram);

// A segment with another sequence number.
Octets Renumbered(Octets segment, std::uint8_t sequenceNumber);

}  // namespace simulator::datagrams
