#pragma once

#include <vector>

#include "Network/Address.h"
#include "Network/NDataUnitRequest.h"
#include "tagReadData.h"

namespace dorvel::BACnet {

// An APDU as a request to the network layer, always with expecting-reply. With a remote network other than 0
// the message goes through a router: it has the remote address, and linkAddress is the router's.
Network::NDataUnitRequest AddressedRequest(std::vector<char> apdu, std::vector<char> const& linkAddress,
                                           Network::Address const& remoteAddress);

// Requests of a read.

// The APDU of one ReadPropertyMultiple for all tags: at least one (otherwise std::out_of_range), all of the
// same object. The properties have the order of the tags; Status_Flags is added at the end if no tag has it.
// First increments the invoke id, an octet that wraps around, and then uses it.
std::vector<char> FormMessage(char& invokeId, std::vector<tagReadData*> const& tags);

// The same as a request to the network layer.
Network::NDataUnitRequest FormRequest(char& invokeId, std::vector<tagReadData*> const& tags,
                                      std::vector<char> const& linkAddress,
                                      Network::Address const& remoteAddress);

// The acknowledgement of one received segment (ASHRAE 135 clause 20.1.6), with the invoke id of the read
// request. Departures on which installed systems rely: the window is always 1 segment, not what the device
// proposes (clause 5.3), and it has expecting-reply (clause 6.2.2).
Network::NDataUnitRequest FormSegmentAckRequest(char const& invokeId, char sequenceNumber,
                                                std::vector<char> const& linkAddress,
                                                Network::Address const& remoteAddress);

}  // namespace dorvel::BACnet
