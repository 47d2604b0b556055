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

}  // namespace standard
