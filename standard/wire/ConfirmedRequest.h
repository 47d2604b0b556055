#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "OctetVector.h"

namespace standard {

// The header of a BACnet-Confirmed-Request-PDU (clause 20.1.2).
struct ConfirmedRequest {
    bool isSegmented = false;
    bool acceptsSegments = false;
    std::uint32_t maxSegments = 0;    // 0: the client sets no limit
    std::uint32_t maxApduLength = 0;  // the longest APDU that the client accepts, in octets
    std::uint8_t invokeId = 0;
    std::uint8_t serviceChoice = 0;  // of an unsegmented request
    std::size_t parametersAt = 0;    // the index of the service's parameters in the APDU

    // No value if the APDU ends within its header.
    static std::optional<ConfirmedRequest> Decode(Octets const& apdu);
};

}  // namespace standard
