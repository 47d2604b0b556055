#pragma once

#include <string>

#include "Peer.h"
#include "Project.h"

namespace workbench {

// The station to which the driver sends the requests of a block: that of Address, or with a NetworkNumber the
// station MAC on that network behind the router of Address.
standard::Peer PeerOf(BlockConfig const& block);

// "127.0.0.1:47808", or "127.0.0.1:47808, network 5, address 0A14".
std::string PeerText(standard::Peer const& peer);

// A whole number among the block's fields, such as CountRepeat.
long long NumberField(BlockConfig const& block, char const* name, long long defaultValue);

}  // namespace workbench
