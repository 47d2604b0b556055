#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "OctetVector.h"

namespace standard {

// The head of a BACnet-Confirmed-Request-PDU (clause 20.1.2).
struct ConfirmedRequest {
    bool isSegmented = false;
    bool acceptsSegments = false;
    std::uint32_t maxSegments = 0;    // 0: the client sets no limit
    std::uint32_t maxApduLength = 0;  // octets that one APDU to the client may have
    std::uint8_t invokeId = 0;
    std::uint8_t serviceChoice = 0;  // of an unsegmented request
    std::size_t parametersAt = 0;    // where the service's parameters begin in the APDU

    // Nothing if the APDU is too short for its head.
    static std::optional<ConfirmedRequest> Decode(Octets const& apdu);
};

}  // namespace standard
