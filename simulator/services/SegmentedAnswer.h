#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include "Moment.h"
#include "OctetVector.h"
#include "Standard.h"

namespace simulator {

// A ComplexACK that is sent in segments (clauses 5.3 and 5.4.5.2). The first segment is sent alone, then a
// window of segments after each Segment-ACK. Segments without an acknowledgement are repeated a limited
// number of times.
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

    // `ackContent` has all parameters of the ack; it must not be empty.
    SegmentedAnswer(Parameters const& answerParameters, Octets ackContent);

    // Each returns the APDUs to be sent now, in order.
    std::vector<Octets> Start(Moment const& now);
    // A Segment-ACK of the client, positive or negative: the client has all segments up to `sequenceNumber`.
    // One for a segment outside the window only restarts the timer. `actualWindowSize` is 1 to 127.
    std::vector<Octets> Acknowledge(std::uint8_t sequenceNumber, std::uint8_t actualWindowSize,
                                    Moment const& now);
    std::vector<Octets> Tick(Moment const& now);

    // All segments are acknowledged, or the repetitions are used up.
    bool IsFinished() const { return isFinished; }
    std::uint8_t InvokeId() const { return parameters.invokeId; }

    // The number of segments for that number of octets.
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
