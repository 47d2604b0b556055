#include "Peer.h"

#include "HexText.h"

namespace standard {

std::string Peer::Text() const {
    if (!remote) {
        return endpoint.Text();
    }
    return "station " + tools::HexText(remote->mac, tools::HexDigits::Lower) + " of network " +
           std::to_string(remote->network) + " behind " + endpoint.Text();
}

bool IsAmong(Peer const& station, Peer const& asked) {
    bool const isAnyOfNetwork = asked.remote && asked.remote->mac.empty() && station.remote &&
                                station.remote->network == asked.remote->network;
    return station == asked || (isAnyOfNetwork && station.endpoint == asked.endpoint);
}

}  // namespace standard
