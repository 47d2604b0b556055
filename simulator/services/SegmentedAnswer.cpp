#include "SegmentedAnswer.h"

#include <algorithm>

#include "OctetWriter.h"

namespace simulator {

namespace {

constexpr std::uint8_t kSegmentOfComplexAck = 0x38;
constexpr std::uint8_t kMoreFollows = 0x04;

}  // namespace

SegmentedAnswer::SegmentedAnswer(Parameters const& parameters, Octets content)
    : m_parameters(parameters), m_content(std::move(content)) {}

std::vector<Octets> SegmentedAnswer::start(Moment const& now) {
    return sendWindow(now);
}

std::vector<Octets> SegmentedAnswer::acknowledge(std::uint8_t sequenceNumber, std::uint8_t windowSize,
                                                 Moment const& now) {
    auto const place = static_cast<std::uint8_t>(sequenceNumber - static_cast<std::uint8_t>(m_firstOfWindow));
    if (place >= m_windowSize || m_firstOfWindow + place >= count()) {
        m_deadline = now.sinceStart + m_parameters.timeout;
        return {};
    }
    m_firstOfWindow += place + 1u;
    m_windowSize = windowSize;
    m_resends = 0;
    m_isFinished = m_firstOfWindow >= count();
    return m_isFinished ? std::vector<Octets>() : sendWindow(now);
}

std::vector<Octets> SegmentedAnswer::tick(Moment const& now) {
    if (m_isFinished || now.sinceStart < m_deadline) {
        return {};
    }
    if (m_resends == m_parameters.retries) {
        m_isFinished = true;
        return {};
    }
    ++m_resends;
    return sendWindow(now);
}

std::vector<Octets> SegmentedAnswer::sendWindow(Moment const& now) {
    std::vector<Octets> segments;
    std::size_t const end = std::min(m_firstOfWindow + m_windowSize, count());
    for (std::size_t number = m_firstOfWindow; number < end; ++number) {
        segments.push_back(segment(number));
    }
    m_deadline = now.sinceStart + m_parameters.timeout;
    return segments;
}

Octets SegmentedAnswer::segment(std::size_t number) const {
    std::size_t const from = number * m_parameters.segmentLength;
    std::size_t const to = std::min(from + m_parameters.segmentLength, m_content.size());
    OctetWriter writer;
    writer.u8(kSegmentOfComplexAck | (to < m_content.size() ? kMoreFollows : 0));
    writer.u8(m_parameters.invokeId);
    writer.u8(static_cast<std::uint8_t>(number));  // numbers wrap at 256 (clause 20.1.5.5)
    writer.u8(m_parameters.proposedWindowSize);
    writer.u8(m_parameters.serviceChoice);
    writer.append(m_content, from, to);
    return writer.take();
}

}  // namespace simulator
