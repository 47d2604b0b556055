#pragma once

#include <optional>

#include "Fault.h"
#include "Faults.h"
#include "OctetVector.h"
#include "Standard.h"

// Faults in what is asked and answered, as a service sees it.
namespace simulator::acks {

// A confirmed request, given as its APDU, as a fault's scope sees it.
Faults::Request RequestOf(Octets const& apdu);

// WrongObject, OddList or OversizedSegments, done to the parameters of an ack and to the longest APDU that it
// may have. Any other kind does nothing, and nor does one that the service has no place for.
void Spoil(Fault const& fault, std::uint8_t serviceChoice, Octets& content, std::size_t& longestApdu);

// A request that asks for a property besides the first object's others, before them: a ReadProperty, in place
// of its own. Any other request is given back as it is.
Octets AskingFor(std::uint32_t property, Octets const& apdu);

// The APDU that Error, Reject and Abort send in place of the service's answer; nothing for any other kind.
std::optional<Octets> Refusal(Fault const& fault, Octets const& requestApdu);

}  // namespace simulator::acks
