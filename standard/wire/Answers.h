#pragma once

#include "OctetWriter.h"
#include "Refusal.h"

// The APDUs that answer a confirmed request, save the segmented one (clauses 20.1.3 to 20.1.9).
namespace standard::answers {

Octets simpleAck(std::uint8_t invokeId, std::uint8_t serviceChoice);
Octets complexAck(std::uint8_t invokeId, std::uint8_t serviceChoice, Octets const& content);
Octets error(std::uint8_t invokeId, std::uint8_t serviceChoice, ServiceError const& error);
Octets reject(std::uint8_t invokeId, RejectReason reason);
// Sent by a server.
Octets abort(std::uint8_t invokeId, AbortReason reason);

// The octets that a complexAck has besides its content.
constexpr std::size_t kComplexAckHead = 3;
// The same for a segment of one.
constexpr std::size_t kSegmentHead = 5;

}  // namespace standard::answers
