#include "DatagramFaults.h"

#include <algorithm>

#include "Bvlc.h"
#include "Npdu.h"
#include "OctetWriter.h"

namespace simulator::datagrams {

namespace {

constexpr std::size_t BvlcLength = 4;
constexpr std::size_t LongestHead = 3;  // of answers, except segments
constexpr std::size_t SegmentHead = 5;
constexpr std::uint8_t ComplexAckPdu = 0x30;
constexpr std::uint8_t SegmentedBit = 0x08;
constexpr std::uint8_t MoreFollowsBit = 0x04;
constexpr char ProposedWindowSize = 16;

std::uint8_t At(Octets const& octets, std::size_t place) {
    return static_cast<std::uint8_t>(octets[place]);
}

void Put(Octets& octets, std::size_t place, std::uint32_t value) {
    if (place < octets.size()) {
        octets[place] = static_cast<char>(value);
    }
}

void PutLength(Octets& datagram, std::size_t length) {
    if (datagram.size() >= BvlcLength) {
        Put(datagram, 2, static_cast<std::uint32_t>(length >> 8));
        Put(datagram, 3, static_cast<std::uint32_t>(length));
    }
}

std::optional<Npdu> NpduOf(Octets const& datagram) {
    if (datagram.size() < BvlcLength) {
        return std::nullopt;
    }
    auto const npdu =
        Npdu::Decode(Octets(datagram.begin() + static_cast<std::ptrdiff_t>(BvlcLength), datagram.end()));
    return npdu && !npdu->isNetworkMessage && !npdu->content.empty() ? npdu : std::nullopt;
}

void Cut(Octets& datagram, std::size_t length, bool mends) {
    datagram.resize(std::min(datagram.size(), length));
    if (mends) {
        PutLength(datagram, datagram.size());
    }
}

std::size_t HeadersLength(Octets const& datagram, FaultHeaders headers) {
    std::size_t const apdu = ApduAt(datagram);
    if (headers == FaultHeaders::Bvlc) {
        return BvlcLength;
    }
    return headers == FaultHeaders::Npdu ? apdu
                                         : apdu + (SequenceNumber(datagram) ? SegmentHead : LongestHead);
}

}  // namespace

std::size_t ApduAt(Octets const& datagram) {
    auto const npdu = NpduOf(datagram);
    return npdu ? datagram.size() - npdu->content.size() : datagram.size();
}

std::optional<std::uint8_t> InvokeId(Octets const& datagram) {
    std::size_t const place = ApduAt(datagram) + 1;
    return place < datagram.size() ? std::optional(At(datagram, place)) : std::nullopt;
}

std::optional<std::uint8_t> SequenceNumber(Octets const& datagram) {
    std::size_t const apdu = ApduAt(datagram);
    bool const isSegment = apdu + SegmentHead <= datagram.size() &&
                           (At(datagram, apdu) & (0xF0 | SegmentedBit)) == (ComplexAckPdu | SegmentedBit);
    return isSegment ? std::optional(At(datagram, apdu + 2)) : std::nullopt;
}

void Spoil(Fault const& fault, Octets& datagram) {
    std::uint32_t const code = fault.code.value_or(RowOf(fault.kind).code);
    switch (fault.kind) {
        case FaultKind::OtherInvokeId:
            Put(datagram, ApduAt(datagram) + 1, InvokeId(datagram).value_or(0) + code);
            break;
        case FaultKind::Truncate:
            Cut(datagram, fault.octet, fault.mends);
            break;
        case FaultKind::BvlcFunction:
            Put(datagram, 1, code);
            break;
        case FaultKind::BvlcType:
            Put(datagram, 0, code);
            break;
        case FaultKind::BvlcLength:
            PutLength(datagram, datagram.size() + code);
            break;
        case FaultKind::HeadersOnly:
            Cut(datagram, HeadersLength(datagram, fault.headers), true);
            break;
        default:
            break;
    }
}

std::optional<Octets> FirstSegment(Octets const& datagram) {
    auto npdu = NpduOf(datagram);
    if (!npdu || (At(npdu->content, 0) & 0xF0) != ComplexAckPdu || npdu->content.size() < LongestHead) {
        return std::nullopt;
    }
    npdu->expectsReply = true;
    if ((npdu->content[0] & SegmentedBit) == 0) {
        npdu->content.insert(npdu->content.begin() + 2, {0, ProposedWindowSize});
    }
    npdu->content[0] = static_cast<char>(ComplexAckPdu | SegmentedBit | MoreFollowsBit);
    return bvlc::Unicast(npdu->Encode());
}

Octets Renumbered(Octets segment, std::uint8_t sequenceNumber) {
    Put(segment, ApduAt(segment) + 2, sequenceNumber);
    return segment;
}

}  // namespace simulator::datagrams
