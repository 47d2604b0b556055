#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "Failure.h"
#include "OctetVector.h"

namespace standard {

// The confirmed services that are decoded here (clause 21, BACnetConfirmedServiceChoice).
enum class ServiceChoice : std::uint8_t { ReadProperty = 12, ReadPropertyMultiple = 14, WriteProperty = 15 };

// A received APDU that answers a confirmed request (clauses 20.1.4 to 20.1.9).
struct AnswerPdu {
    enum class Kind { SimpleAck, ComplexAck, SegmentAck, Error, Reject, Abort };
    Kind kind = Kind::SimpleAck;
    std::uint8_t invokeId = 0;
    std::uint8_t serviceChoice = 0;  // SimpleAck, ComplexAck, Error

    bool isSegmented = false;         // ComplexAck: one segment of it
    bool moreFollows = false;         // of a segment
    std::uint8_t sequenceNumber = 0;  // of a segment; SegmentAck: the last one received
    std::uint8_t windowSize = 0;      // of a segment: proposed; SegmentAck: the actual one
    bool isNegative = false;          // SegmentAck
    bool isFromServer = false;        // SegmentAck, Abort

    // Error, Reject and Abort, with numbers. An Error whose class and code cannot be read is Malformed.
    std::optional<Failure> failure;
    // The index of the parameters of a ComplexAck, or of its part in a segment.
    std::size_t contentAt = 0;

    // No value if the APDU has another type or ends within its header. Never throws.
    static std::optional<AnswerPdu> Decode(Octets const& apdu);
};

}  // namespace standard
