#pragma once

#include <vector>

#include "Network/Address.h"
#include "Network/NDataUnitRequest.h"
#include "tagReadData.h"

namespace dorvel::BACnet {

// An APDU as a request to the network layer, marked as expecting a reply. With a remote network other than 0
// the message goes through a router: it carries the remote address, and the link address is the router's.
Network::NDataUnitRequest AddressedRequest(std::vector<char> apdu, std::vector<char> const& linkAddress,
                                           Network::Address const& remoteAddress);

// The requests of a read.

// The APDU of one ReadPropertyMultiple for all tags, which must be of one object and at least one (none
// throws std::out_of_range). The properties are asked for in the order of the tags, with Status_Flags behind
// them if no tag has it. Increments the invoke id, an octet that wraps, and uses the new value.
std::vector<char> FormMessage(char& invokeId, std::vector<tagReadData*> const& tags);

// The same as a request to the network layer.
Network::NDataUnitRequest FormRequest(char& invokeId, std::vector<tagReadData*> const& tags,
                                      std::vector<char> const& linkAddress,
                                      Network::Address const& remoteAddress);

// The acknowledgement of one received segment (ASHRAE 135 clause 20.1.6) with window size 1. It carries the
// invoke id of the read request, which does not change.
Network::NDataUnitRequest FormSegmentAckRequest(char const& invokeId, char sequenceNumber,
                                                std::vector<char> const& linkAddress,
                                                Network::Address const& remoteAddress);

}  // namespace dorvel::BACnet
