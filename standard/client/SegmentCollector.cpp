#include "SegmentCollector.h"

#include <algorithm>

namespace standard {

namespace {

// Sequence numbers wrap at 256.
std::uint8_t Distance(std::uint8_t from, std::uint8_t to) {
    return static_cast<std::uint8_t>(to - from);
}

}  // namespace

SegmentCollector::SegmentCollector(std::uint8_t largestWindow, std::size_t longestAnswer)
    : largest(largestWindow), longest(longestAnswer) {}

std::optional<SegmentCollector::Ack> SegmentCollector::Take(AnswerPdu const& segment, Octets const& apdu) {
    if (count == 0 && segment.sequenceNumber != 0) {
        return std::nullopt;
    }
    bool const isFirst = count == 0;
    if (!isFirst && Distance(last, segment.sequenceNumber) != 1) {
        return OutOfOrder(segment.sequenceNumber);
    }
    outOfOrder.reset();
    windowSize = std::clamp<std::uint8_t>(segment.windowSize, 1, largest);
    last = segment.sequenceNumber;
    Append(segment, apdu);
    if (!isFirst && !isComplete && Distance(acknowledged, last) < windowSize) {
        return std::nullopt;
    }
    acknowledged = last;
    return Ack{last, windowSize, false};
}

// A repeated segment of the current window is dropped. After any other one the device has to hear what was
// received: either a segment is missing, or it did not receive the last SegmentACK.
std::optional<SegmentCollector::Ack> SegmentCollector::OutOfOrder(std::uint8_t sequenceNumber) {
    std::uint8_t const received = Distance(acknowledged, last);
    std::uint8_t const offset = Distance(acknowledged, sequenceNumber);
    if (offset >= 1 && offset <= received) {
        ++repeated;
        return std::nullopt;
    }
    // From the missing segment on. The larger half of the distances are segments before it.
    std::uint8_t const missing = static_cast<std::uint8_t>(last + 1);
    std::uint8_t const ahead = Distance(missing, sequenceNumber);
    ++(ahead < 128 ? gaps : repeated);
    // One negative SegmentACK for a series of them; the next one when the device repeats the series.
    bool const isInSeries = outOfOrder && ahead > Distance(missing, *outOfOrder);
    outOfOrder = sequenceNumber;
    if (isInSeries) {
        return std::nullopt;
    }
    acknowledged = last;
    return Ack{last, windowSize, true};
}

void SegmentCollector::Append(AnswerPdu const& segment, Octets const& apdu) {
    ++count;
    if (apdu.size() - segment.contentAt > longest - content.size()) {
        isTooLong = true;
        return;
    }
    content.insert(content.end(), apdu.begin() + static_cast<std::ptrdiff_t>(segment.contentAt), apdu.end());
    isComplete = !segment.moreFollows;
}

}  // namespace standard
