#include "DatagramFaults.h"

#include <algorithm>

#include "Bvlc.h"
#include "Npdu.h"
#include "OctetWriter.h"

namespace simulator::datagrams {

namespace {

constexpr std::size_t kBvlcLength = 4;
constexpr std::size_t kLongestHead = 3;  // of APDUs that answer, save segments
constexpr std::size_t kSegmentHead = 5;
constexpr std::uint8_t kComplexAck = 0x30;
constexpr std::uint8_t kSegmented = 0x08;
constexpr std::uint8_t kMoreFollows = 0x04;
constexpr char kWindowSize = 16;

std::uint8_t at(Octets const& octets, std::size_t place) {
    return static_cast<std::uint8_t>(octets[place]);
}

void put(Octets& octets, std::size_t place, std::uint32_t value) {
    if (place < octets.size()) {
        octets[place] = static_cast<char>(value);
    }
}

void putLength(Octets& datagram, std::size_t length) {
    if (datagram.size() >= kBvlcLength) {
        put(datagram, 2, static_cast<std::uint32_t>(length >> 8));
        put(datagram, 3, static_cast<std::uint32_t>(length));
    }
}

std::optional<Npdu> npduOf(Octets const& datagram) {
    if (datagram.size() < kBvlcLength) {
        return std::nullopt;
    }
    auto const npdu =
        Npdu::decode(Octets(datagram.begin() + static_cast<std::ptrdiff_t>(kBvlcLength), datagram.end()));
    return npdu && !npdu->isNetworkMessage && !npdu->content.empty() ? npdu : std::nullopt;
}

void cut(Octets& datagram, std::size_t length, bool mends) {
    datagram.resize(std::min(datagram.size(), length));
    if (mends) {
        putLength(datagram, datagram.size());
    }
}

std::size_t headersLength(Octets const& datagram, FaultHeaders headers) {
    std::size_t const apdu = apduAt(datagram);
    if (headers == FaultHeaders::Bvlc) {
        return kBvlcLength;
    }
    return headers == FaultHeaders::Npdu ? apdu
                                         : apdu + (sequenceNumber(datagram) ? kSegmentHead : kLongestHead);
}

}  // namespace

std::size_t apduAt(Octets const& datagram) {
    auto const npdu = npduOf(datagram);
    return npdu ? datagram.size() - npdu->content.size() : datagram.size();
}

std::optional<std::uint8_t> invokeId(Octets const& datagram) {
    std::size_t const place = apduAt(datagram) + 1;
    return place < datagram.size() ? std::optional(at(datagram, place)) : std::nullopt;
}

std::optional<std::uint8_t> sequenceNumber(Octets const& datagram) {
    std::size_t const apdu = apduAt(datagram);
    bool const isSegment = apdu + kSegmentHead <= datagram.size() &&
                           (at(datagram, apdu) & (0xF0 | kSegmented)) == (kComplexAck | kSegmented);
    return isSegment ? std::optional(at(datagram, apdu + 2)) : std::nullopt;
}

void spoil(Fault const& fault, Octets& datagram) {
    std::uint32_t const code = fault.code.value_or(rowOf(fault.kind).code);
    switch (fault.kind) {
        case FaultKind::OtherInvokeId:
            put(datagram, apduAt(datagram) + 1, invokeId(datagram).value_or(0) + code);
            break;
        case FaultKind::Truncate:
            cut(datagram, fault.octet, fault.mends);
            break;
        case FaultKind::BvlcFunction:
            put(datagram, 1, code);
            break;
        case FaultKind::BvlcType:
            put(datagram, 0, code);
            break;
        case FaultKind::BvlcLength:
            putLength(datagram, datagram.size() + code);
            break;
        case FaultKind::HeadersOnly:
            cut(datagram, headersLength(datagram, fault.headers), true);
            break;
        default:
            break;
    }
}

std::optional<Octets> firstSegment(Octets const& datagram) {
    auto npdu = npduOf(datagram);
    if (!npdu || (at(npdu->content, 0) & 0xF0) != kComplexAck || npdu->content.size() < kLongestHead) {
        return std::nullopt;
    }
    npdu->expectsReply = true;
    if ((npdu->content[0] & kSegmented) == 0) {
        npdu->content.insert(npdu->content.begin() + 2, {0, kWindowSize});
    }
    npdu->content[0] = static_cast<char>(kComplexAck | kSegmented | kMoreFollows);
    return bvlc::unicast(npdu->encode());
}

Octets renumbered(Octets segment, std::uint8_t sequenceNumber) {
    put(segment, apduAt(segment) + 2, sequenceNumber);
    return segment;
}

}  // namespace simulator::datagrams
