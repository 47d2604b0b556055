#include "ConfirmedRequest.h"

#include "OctetReader.h"

namespace standard {

namespace {

constexpr std::uint8_t kSegmented = 0x08;
constexpr std::uint8_t kAcceptsSegments = 0x02;

// Clause 20.1.2.4: the first code is "unspecified", the last "more than 64".
constexpr std::uint32_t kMaxSegments[] = {0, 2, 4, 8, 16, 32, 64, 0};

// Clause 20.1.2.5; the codes behind these are reserved for lengths from here up.
constexpr std::uint32_t kMaxApduLengths[] = {50, 128, 206, 480, 1024, 1476};
constexpr std::uint8_t kLastLengthCode = 5;

}  // namespace

std::optional<ConfirmedRequest> ConfirmedRequest::decode(Octets const& apdu) try {
    OctetReader reader(apdu);
    ConfirmedRequest request;
    std::uint8_t const flags = reader.u8();
    request.isSegmented = (flags & kSegmented) != 0;
    request.acceptsSegments = (flags & kAcceptsSegments) != 0;
    std::uint8_t const limits = reader.u8();
    std::uint8_t const lengthCode = limits & 0x0F;
    request.maxSegments = kMaxSegments[limits >> 4 & 0x07];
    request.maxApduLength = kMaxApduLengths[lengthCode < kLastLengthCode ? lengthCode : kLastLengthCode];
    request.invokeId = reader.u8();
    if (request.isSegmented) {
        reader.u16();  // sequence number and proposed window size
    }
    request.serviceChoice = reader.u8();
    request.parametersAt = reader.position();
    return request;
} catch (EndOfOctets const&) {
    return std::nullopt;
}

}  // namespace standard
