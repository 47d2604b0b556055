#pragma once

#include <optional>

#include "Fault.h"
#include "Faults.h"
#include "OctetVector.h"
#include "Standard.h"

// Faults of requests and answers of the application layer.
namespace simulator::acks {

// The service and the object of a confirmed request, with which the scope of a fault is compared.
Faults::Request RequestOf(Octets const& apdu);

// Applies WrongObject, OddList or OversizedSegments to the parameters of an ack and to the limit of its
// APDUs. Any other kind changes nothing, and nor does a kind that the service does not have.
void Spoil(Fault const& fault, std::uint8_t serviceChoice, Octets& content, std::size_t& longestApdu);

// The request with an additional property before those of its first object; in a ReadProperty, the property
// replaces the requested one. Any other request is unchanged.
Octets AskingFor(std::uint32_t property, Octets const& apdu);

// The APDU that Error, Reject and Abort send instead of the answer of the service. No value for any other
// kind.
std::optional<Octets> Refusal(Fault const& fault, Octets const& requestApdu);

}  // namespace simulator::acks
