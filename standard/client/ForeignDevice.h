#pragma once

#include <string>

#include "DiscoverySettings.h"
#include "Link.h"

namespace standard {

// Registers the link's endpoint with the BBMD `settings.target` as a foreign device, for somewhat more than
// the longest discovery (Annex J.5.2). Returns why it failed, in words; empty if it did not, or if the link
// was stopped. Datagrams that arrive meanwhile are dropped.
std::string RegisterAsForeignDevice(Link& link, DiscoverySettings const& settings);

// Why a BBMD does not do what it is asked, by the code of its BVLC-Result.
std::string BbmdRefusal(Endpoint const& bbmd, std::uint16_t resultCode);

}  // namespace standard
