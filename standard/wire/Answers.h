#pragma once

#include "OctetWriter.h"
#include "Refusal.h"

// The APDUs that answer a confirmed request, save the segmented one (clauses 20.1.3 to 20.1.9).
namespace standard::answers {

Octets SimpleAck(std::uint8_t invokeId, std::uint8_t serviceChoice);
Octets ComplexAck(std::uint8_t invokeId, std::uint8_t serviceChoice, Octets const& content);
Octets Error(std::uint8_t invokeId, std::uint8_t serviceChoice, ServiceError const& error);
Octets Reject(std::uint8_t invokeId, RejectReason reason);
// Sent by a server.
Octets Abort(std::uint8_t invokeId, AbortReason reason);

// The octets that a ComplexAck has besides its content.
constexpr std::size_t ComplexAckHead = 3;
// The same for a segment of one.
constexpr std::size_t SegmentHead = 5;

}  // namespace standard::answers
