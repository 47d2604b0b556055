#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include "Moment.h"
#include "OctetVector.h"
#include "Standard.h"

namespace simulator {

// A ComplexACK that is sent in segments (clauses 5.3 and 5.4.5.2). The first segment goes alone; each
// Segment-ACK then lets as many follow as its window allows. Segments that are not acknowledged in time
// are sent again, a limited number of times.
class SegmentedAnswer {
public:
    struct Parameters {
        std::uint8_t invokeId;
        std::uint8_t serviceChoice;
        std::size_t segmentLength;  // octets of the ack's parameters in one segment; above 0
        std::uint8_t proposedWindowSize;
        std::chrono::milliseconds timeout;
        std::uint32_t retries;
    };

    // `ackContent` is the whole of the ack's answerParameters; not empty.
    SegmentedAnswer(Parameters const& answerParameters, Octets ackContent);

    // Each of these gives the APDUs to be sent now, in their order.
    std::vector<Octets> Start(Moment const& now);
    // A Segment-ACK of the client, positive or negative: it has got every segment up to
    // `sequenceNumber`. One for segments outside the window only restarts the timer.
    // `actualWindowSize` is 1 to 127.
    std::vector<Octets> Acknowledge(std::uint8_t sequenceNumber, std::uint8_t actualWindowSize,
                                    Moment const& now);
    std::vector<Octets> Tick(Moment const& now);

    // All was acknowledged, or no acknowledgement came at all.
    bool IsFinished() const { return isFinished; }
    std::uint8_t InvokeId() const { return parameters.invokeId; }

    // How many segments that many octets need.
    static std::size_t SegmentCount(std::size_t contentLength, std::size_t segmentLength) {
        return (contentLength + segmentLength - 1) / segmentLength;
    }

private:
    std::size_t Count() const { return SegmentCount(content.size(), parameters.segmentLength); }
    std::vector<Octets> SendWindow(Moment const& now);
    Octets Segment(std::size_t number) const;

    Parameters parameters;
    Octets content;
    std::size_t firstOfWindow = 0;  // the first segment that is not acknowledged
    std::uint8_t windowSize = 1;
    std::uint32_t resends = 0;
    std::chrono::milliseconds deadline{0};
    bool isFinished = false;
};

}  // namespace simulator
