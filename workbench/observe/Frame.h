#pragma once

#include <optional>
#include <string>

#include "Npdu.h"
#include "OctetVector.h"

namespace workbench {

// The octets after the BVLC header of a datagram, whatever the header says: the driver sends a wrong length
// in frames of 256 octets or more. Empty for a shorter datagram.
standard::Octets NpduOf(standard::Octets const& datagram);

// What is wrong with the BVLC header (Annex J.2), in words; empty for an NPDU that was sent to this station
// directly. "its BVLC function is 0x00 (BVLC-Result)".
std::string FrameMistake(standard::Octets const& datagram);

// The type of a network-layer message (clause 6.2.4) in words: "Reject-Message-To-Network", "type 0x20".
std::string NetworkMessageText(standard::Npdu const& npdu);

// "10.0.0.9:47808", with the station behind it "10.0.0.9:47808, network 5, station 0A", or "any station"
// without a MAC address.
std::string StationText(std::string const& endpoint, std::optional<standard::NetworkAddress> const& source);

}  // namespace workbench
