#include "ConfirmedRequest.h"

#include "OctetReader.h"

namespace standard {

namespace {

constexpr std::uint8_t SegmentedBit = 0x08;
constexpr std::uint8_t AcceptsSegmentsBit = 0x02;

// Clause 20.1.2.4: the first code is "unspecified", the last "more than 64".
constexpr std::uint32_t SegmentLimits[] = {0, 2, 4, 8, 16, 32, 64, 0};

// Clause 20.1.2.5; the codes after these are reserved for lengths from here up.
constexpr std::uint32_t ApduLengths[] = {50, 128, 206, 480, 1024, 1476};
constexpr std::uint8_t LastLengthCode = 5;

}  // namespace

std::optional<ConfirmedRequest> ConfirmedRequest::Decode(Octets const& apdu) try {
    OctetReader reader(apdu);
    ConfirmedRequest request;
    std::uint8_t const flags = reader.U8();
    request.isSegmented = (flags & SegmentedBit) != 0;
    request.acceptsSegments = (flags & AcceptsSegmentsBit) != 0;
    std::uint8_t const limits = reader.U8();
    std::uint8_t const lengthCode = limits & 0x0F;
    request.maxSegments = SegmentLimits[limits >> 4 & 0x07];
    request.maxApduLength = ApduLengths[lengthCode < LastLengthCode ? lengthCode : LastLengthCode];
    request.invokeId = reader.U8();
    if (request.isSegmented) {
        reader.U16();  // sequence number and proposed window size
    }
    request.serviceChoice = reader.U8();
    request.parametersAt = reader.Position();
    return request;
} catch (EndOfOctets const&) {
    return std::nullopt;
}

}  // namespace standard
