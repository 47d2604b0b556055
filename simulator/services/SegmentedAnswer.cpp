#include "SegmentedAnswer.h"

#include <algorithm>

#include "OctetWriter.h"

namespace simulator {

namespace {

constexpr std::uint8_t SegmentOfComplexAck = 0x38;
constexpr std::uint8_t MoreFollows = 0x04;

}  // namespace

SegmentedAnswer::SegmentedAnswer(Parameters const& answerParameters, Octets ackContent)
    : parameters(answerParameters), content(std::move(ackContent)) {}

std::vector<Octets> SegmentedAnswer::Start(Moment const& now) {
    return SendWindow(now);
}

std::vector<Octets> SegmentedAnswer::Acknowledge(std::uint8_t sequenceNumber, std::uint8_t actualWindowSize,
                                                 Moment const& now) {
    auto const place = static_cast<std::uint8_t>(sequenceNumber - static_cast<std::uint8_t>(firstOfWindow));
    if (place >= windowSize || firstOfWindow + place >= Count()) {
        deadline = now.sinceStart + parameters.timeout;
        return {};
    }
    firstOfWindow += place + 1u;
    windowSize = actualWindowSize;
    resends = 0;
    isFinished = firstOfWindow >= Count();
    return isFinished ? std::vector<Octets>() : SendWindow(now);
}

std::vector<Octets> SegmentedAnswer::Tick(Moment const& now) {
    if (isFinished || now.sinceStart < deadline) {
        return {};
    }
    if (resends == parameters.retries) {
        isFinished = true;
        return {};
    }
    ++resends;
    return SendWindow(now);
}

std::vector<Octets> SegmentedAnswer::SendWindow(Moment const& now) {
    std::vector<Octets> segments;
    std::size_t const end = std::min(firstOfWindow + windowSize, Count());
    for (std::size_t number = firstOfWindow; number < end; ++number) {
        segments.push_back(Segment(number));
    }
    deadline = now.sinceStart + parameters.timeout;
    return segments;
}

Octets SegmentedAnswer::Segment(std::size_t number) const {
    std::size_t const from = number * parameters.segmentLength;
    std::size_t const to = std::min(from + parameters.segmentLength, content.size());
    OctetWriter writer;
    writer.U8(SegmentOfComplexAck | (to < content.size() ? MoreFollows : 0));
    writer.U8(parameters.invokeId);
    writer.U8(static_cast<std::uint8_t>(number));  // numbers wrap at 256 (clause 20.1.5.5)
    writer.U8(parameters.proposedWindowSize);
    writer.U8(parameters.serviceChoice);
    writer.Append(content, from, to);
    return writer.Take();
}

}  // namespace simulator
