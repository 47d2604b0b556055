#pragma once

#include <cstdint>
#include <vector>

#include "OctetVector.h"
#include "PropertyReference.h"
#include "Refusal.h"

// The APDUs of a client that reads (clauses 20.1.2, 20.1.5 and 20.1.9). Its requests are never segmented.
// They state that it accepts answers of any number of segments, of up to 1476 octets each.
namespace standard::requests {

Octets ReadProperty(std::uint8_t invokeId, PropertyReference const& reference);
// Neighbours of the same object share its identifier. The list must not be empty.
Octets ReadPropertyMultiple(std::uint8_t invokeId, std::vector<PropertyReference> const& references);
// Received up to and with that segment. A negative one requests those after it again.
Octets SegmentAck(std::uint8_t invokeId, std::uint8_t sequenceNumber, std::uint8_t windowSize,
                  bool isNegative);
// An Abort with the server bit cleared.
Octets Abort(std::uint8_t invokeId, AbortReason reason);

// The size of the ReadPropertyMultiple request, in octets.
std::size_t SizeOfReadPropertyMultiple(std::vector<PropertyReference> const& references);

}  // namespace standard::requests
