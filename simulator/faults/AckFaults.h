#pragma once

#include <optional>

#include "Fault.h"
#include "Faults.h"
#include "Octets.h"
#include "Standard.h"

// Faults in what is asked and answered, as a service sees it.
namespace simulator::acks {

// What a confirmed request, given as its APDU, is to a fault's scope.
Faults::Request RequestOf(Octets const& apdu);

// WrongObject, OddList or OversizedSegments, done to the parameters of an ack and to the longest APDU that it
// may have. Any other kind does nothing, and nor does one that the service has no place for.
void Spoil(Fault const& fault, std::uint8_t serviceChoice, Octets& content, std::size_t& longestApdu);

// A request that asks for a property besides the first object's others, before them: a ReadProperty, in place
// of its own. Any other request is given back as it is.
Octets AskingFor(std::uint32_t property, Octets const& apdu);

// What is answered in place of the service's answer by Error, Reject and Abort: the APDU; nothing for any
// other kind.
std::optional<Octets> Refusal(Fault const& fault, Octets const& requestApdu);

}  // namespace simulator::acks
