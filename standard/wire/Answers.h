#pragma once

#include "OctetWriter.h"
#include "Refusal.h"

// The APDUs that answer a confirmed request, except segments (clauses 20.1.3 to 20.1.9).
namespace standard::answers {

Octets SimpleAck(std::uint8_t invokeId, std::uint8_t serviceChoice);
Octets ComplexAck(std::uint8_t invokeId, std::uint8_t serviceChoice, Octets const& content);
Octets Error(std::uint8_t invokeId, std::uint8_t serviceChoice, ServiceError const& error);
Octets Reject(std::uint8_t invokeId, RejectReason reason);
// An Abort with the server bit set.
Octets Abort(std::uint8_t invokeId, AbortReason reason);

// The size of the header of an unsegmented ComplexACK, in octets.
constexpr std::size_t ComplexAckHead = 3;
// The size of the header of a segment of a ComplexACK.
constexpr std::size_t SegmentHead = 5;

}  // namespace standard::answers
