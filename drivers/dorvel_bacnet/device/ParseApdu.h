#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "FakeStream.h"
#include "PduParser.h"

namespace dorvel::BACnet {

// Parses one received APDU. Throws as PduParser::Parse does; an empty APDU, which means that nothing was
// received, throws WrongLengthException.
inline std::unique_ptr<PDU> ParseApdu(std::vector<char> apdu) {
    FakeStream stream(std::move(apdu));
    return PduParser::Parse(stream);
}

}  // namespace dorvel::BACnet
