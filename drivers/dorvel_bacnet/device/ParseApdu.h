#pragma once

#include <memory>
#include <vector>

#include "FakeStream.h"
#include "PduParser.h"

namespace dorvel::BACnet {

// One received APDU as a PDU. Throws as PduParser::Parse does; no octets at all, which is what stands there
// when nothing came, are a WrongLengthException.
inline std::unique_ptr<PDU> ParseApdu(std::vector<char> const& apdu) {
    FakeStream stream(apdu);
    return PduParser::Parse(stream);
}

}  // namespace dorvel::BACnet
