#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "AnswerPdu.h"
#include "OctetVector.h"

namespace standard {

// Puts the segments of one answer together (clause 5.4.4.3), without network and time.
class SegmentCollector {
public:
    // windowSize, 1 to 127, is the largest window that the client accepts; longestAnswer limits the octets of
    // all segments.
    SegmentCollector(std::uint8_t largestWindow, std::size_t longestAnswer);

    struct Ack {
        std::uint8_t sequenceNumber;
        std::uint8_t windowSize;
        bool isNegative;
    };

    // Takes a segment of that APDU. Returns the SegmentACK that is due, if one is. A segment other than the
    // first one of an answer is dropped as long as there was no first one.
    std::optional<Ack> Take(AnswerPdu const& segment, Octets const& apdu);

    bool IsComplete() const { return isComplete; }
    // The segments have more octets than allowed. Those of the last one are missing.
    bool IsTooLong() const { return isTooLong; }
    // The parameters of the answer, once it is complete.
    Octets const& Content() const { return content; }
    // Segments in their order, segments that came more than once, and segments that came after a missing one.
    unsigned Count() const { return count; }
    unsigned Repeated() const { return repeated; }
    unsigned Gaps() const { return gaps; }

private:
    std::optional<Ack> OutOfOrder(std::uint8_t sequenceNumber);
    void Append(AnswerPdu const& segment, Octets const& apdu);

    std::uint8_t const largest;
    std::size_t const longest;
    Octets content;
    std::uint8_t windowSize = 1;
    std::uint8_t last = 0;                   // the sequence number of the last segment in order
    std::uint8_t acknowledged = 0;           // the one of the latest SegmentACK
    std::optional<std::uint8_t> outOfOrder;  // the last segment, if it was not the expected one
    unsigned count = 0;
    unsigned repeated = 0;
    unsigned gaps = 0;
    bool isComplete = false;
    bool isTooLong = false;
};

}  // namespace standard
