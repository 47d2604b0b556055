#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include "Moment.h"
#include "Octets.h"
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

    // `content` is the whole of the ack's parameters; not empty.
    SegmentedAnswer(Parameters const& parameters, Octets content);

    // Each of these gives the APDUs to be sent now, in their order.
    std::vector<Octets> start(Moment const& now);
    // A Segment-ACK of the client, positive or negative: it has got every segment up to
    // `sequenceNumber`. One for segments outside the window only restarts the timer.
    // `windowSize` is 1 to 127.
    std::vector<Octets> acknowledge(std::uint8_t sequenceNumber, std::uint8_t windowSize, Moment const& now);
    std::vector<Octets> tick(Moment const& now);

    // All was acknowledged, or no acknowledgement came at all.
    bool isFinished() const { return m_isFinished; }
    std::uint8_t invokeId() const { return m_parameters.invokeId; }

    // How many segments that many octets need.
    static std::size_t segmentCount(std::size_t contentLength, std::size_t segmentLength) {
        return (contentLength + segmentLength - 1) / segmentLength;
    }

private:
    std::size_t count() const { return segmentCount(m_content.size(), m_parameters.segmentLength); }
    std::vector<Octets> sendWindow(Moment const& now);
    Octets segment(std::size_t number) const;

    Parameters m_parameters;
    Octets m_content;
    std::size_t m_firstOfWindow = 0;  // the first segment that is not acknowledged
    std::uint8_t m_windowSize = 1;
    std::uint32_t m_resends = 0;
    std::chrono::milliseconds m_deadline{0};
    bool m_isFinished = false;
};

}  // namespace simulator
