#include "FaultyStation.h"

#include <algorithm>

#include "AckFaults.h"
#include "Bvlc.h"
#include "ConfirmedRequest.h"
#include "DatagramFaults.h"

namespace simulator {

namespace {

constexpr std::size_t kMostDeliveries = 512;
constexpr std::size_t kLongestGarbage = 65507;  // octets of a UDP datagram
constexpr std::uint8_t kLargestWindow = 127;
constexpr std::uint8_t kSentByServer = 0x01;

enum PduType : std::uint8_t { kConfirmedRequest = 0, kSegmentAck = 4, kAbort = 7 };

std::uint8_t octet(Octets const& octets, std::size_t place) {
    return static_cast<std::uint8_t>(octets[place]);
}

bool isOfSegments(FaultKind kind) {
    return kind == FaultKind::LostSegment || kind == FaultKind::SegmentsOutOfOrder ||
           kind == FaultKind::RepeatedSegment || kind == FaultKind::SegmentsAtOnce ||
           kind == FaultKind::EndlessSegments;
}

bool replacesAnswer(FaultKind kind) {
    return kind == FaultKind::NetworkMessage || kind == FaultKind::Error || kind == FaultKind::Reject ||
           kind == FaultKind::Abort;
}

std::vector<Delivery> asDeliveries(std::vector<Datagram> datagrams) {
    std::vector<Delivery> deliveries;
    for (Datagram& datagram : datagrams) {
        deliveries.push_back({std::move(datagram)});
    }
    return deliveries;
}

template <class Place>
void copyBehind(std::vector<Delivery>& deliveries, Place place) {
    Delivery const copy = *place;
    deliveries.insert(place + 1, copy);
}

// The NPDU of a datagram that the network layer took already.
Npdu npduOf(Datagram const& datagram) {
    return Npdu::decode(bvlc::receive(datagram).message->npdu).value();
}

Datagram withApdu(Datagram const& datagram, Endpoint const& source, Octets apdu) {
    Npdu npdu = npduOf(datagram);
    npdu.content = std::move(apdu);
    return {source, bvlc::unicast(npdu.encode())};
}

// A message of the network layer about the network that the request was for (clause 6.4).
Octets networkMessage(std::uint32_t type, Npdu const& request, Peer const& peer) {
    constexpr char reason = 1;
    std::uint16_t const network = request.destination ? request.destination->network : 0;
    Octets content{static_cast<char>(type), reason, static_cast<char>(network >> 8),
                   static_cast<char>(network)};
    return Npdu{true, false, request.priority, peer.remote, std::nullopt, 255, std::move(content)}.encode();
}

auto segmentIn(std::vector<Delivery>& deliveries, std::uint32_t number) {
    return std::find_if(deliveries.begin(), deliveries.end(), [number](Delivery const& delivery) {
        return datagrams::sequenceNumber(delivery.datagram.octets) == number;
    });
}

}  // namespace

FaultyStation::FaultyStation(Device device)
    : m_station(std::move(device)), m_network(m_station.device().settings().position) {
    for (Fault const& fault : m_station.device().settings().faults) {
        m_faults.add(fault);
    }
    m_station.onAck([this](std::uint8_t serviceChoice, Octets& content, std::size_t& longestApdu) {
        filterAck(serviceChoice, content, longestApdu);
    });
}

FaultyStation::Deliveries FaultyStation::receive(Datagram const& datagram, Moment const& now) {
    m_faults.update(now);
    auto const link = bvlc::receive(datagram).message;
    auto const indication =
        link ? m_network.receive(link->source, link->isBroadcast, link->npdu).indication : std::nullopt;
    if (indication && !indication->apdu.empty()) {
        std::uint8_t const type = octet(indication->apdu, 0) >> 4;
        if (type == kConfirmedRequest && !indication->isBroadcast) {
            return receiveRequest(datagram, *indication, now);
        }
        bool const hasInvokeId = indication->apdu.size() >= 2;
        bool const isOfClient = (octet(indication->apdu, 0) & kSentByServer) == 0;
        if (type == kSegmentAck && isOfClient && indication->apdu.size() >= 4) {
            return receiveSegmentAck(datagram, *indication, now);
        }
        if (type == kAbort && isOfClient && hasInvokeId) {
            forget(indication->peer, octet(indication->apdu, 1));
        }
    }
    return asDeliveries(m_station.receive(datagram, now));
}

// What is repeated of one exchange is disturbed together, as it was at first.
FaultyStation::Deliveries FaultyStation::tick(Moment const& now) {
    m_faults.update(now);
    Deliveries all;
    Deliveries ofOne;
    Exchange* last = nullptr;
    auto const finish = [&] {
        Deliveries const sent = last ? disturbed(*last, std::move(ofOne), now) : std::move(ofOne);
        all.insert(all.end(), sent.begin(), sent.end());
        ofOne.clear();
    };
    for (Delivery& delivery : asDeliveries(m_station.tick(now))) {
        Exchange* const exchange = exchangeOf(delivery.datagram);
        if (exchange != last) {
            finish();
            last = exchange;
        }
        if (!exchange || !exchange->endless) {
            ofOne.push_back(std::move(delivery));
        }
    }
    finish();
    return all;
}

FaultyStation::Deliveries FaultyStation::receiveRequest(Datagram const& datagram,
                                                        NetworkLayer::Indication const& indication,
                                                        Moment const& now) {
    auto const request = ConfirmedRequest::decode(indication.apdu);
    if (!request) {
        return asDeliveries(m_station.receive(datagram, now));
    }
    forget(indication.peer, request->invokeId);
    Exchange exchange;
    exchange.peer = indication.peer;
    exchange.invokeId = request->invokeId;
    exchange.hits = m_faults.meet(acks::requestOf(indication.apdu), now);
    std::stable_partition(exchange.hits.begin(), exchange.hits.end(),
                          [](Faults::Hit const& hit) { return isOfSegments(hit.fault.kind); });
    Deliveries deliveries = serve(datagram, indication, exchange, now);
    remember(indication.peer.endpoint.address, deliveries);
    deliveries = disturbed(exchange, std::move(deliveries), now);
    if (!exchange.hits.empty()) {
        if (m_exchanges.size() == kMostExchanges) {
            m_exchanges.pop_front();
        }
        m_exchanges.push_back(std::move(exchange));
    }
    return deliveries;
}

// The answer as the station gives it, or that of the first fault that answers in its place.
FaultyStation::Deliveries FaultyStation::serve(Datagram const& datagram,
                                               NetworkLayer::Indication const& indication, Exchange& exchange,
                                               Moment const& now) {
    Octets apdu = indication.apdu;
    for (Faults::Hit const& hit : exchange.hits) {
        FaultKind const kind = hit.fault.kind;
        if (kind == FaultKind::Silence) {
            exchange.isOver = true;
            return {};
        }
        std::uint32_t const code = hit.fault.code.value_or(rowOf(kind).code);
        if (replacesAnswer(kind)) {
            auto const refusal = acks::refusal(hit.fault, indication.apdu);
            Octets const npdu = refusal ? m_network.send({indication.peer, indication.priority, *refusal})
                                        : networkMessage(code, npduOf(datagram), indication.peer);
            return {{{indication.peer.endpoint, bvlc::unicast(npdu)}}};
        }
        if (kind == FaultKind::UnaskedProperty) {
            apdu = acks::askingFor(code, apdu);
        }
    }
    m_served = &exchange;
    Datagram const asked =
        apdu == indication.apdu ? datagram : withApdu(datagram, indication.peer.endpoint, std::move(apdu));
    Deliveries deliveries = asDeliveries(m_station.receive(asked, now));
    m_served = nullptr;
    return deliveries;
}

void FaultyStation::filterAck(std::uint8_t serviceChoice, Octets& content, std::size_t& longestApdu) const {
    if (m_served) {
        for (Faults::Hit const& hit : m_served->hits) {
            acks::spoil(hit.fault, serviceChoice, content, longestApdu);
        }
    }
}

FaultyStation::Deliveries FaultyStation::receiveSegmentAck(Datagram const& datagram,
                                                           NetworkLayer::Indication const& indication,
                                                           Moment const& now) {
    Exchange* const exchange = find(indication.peer, octet(indication.apdu, 1));
    if (!exchange) {
        return asDeliveries(m_station.receive(datagram, now));
    }
    if (exchange->endless) {
        return disturbed(
            *exchange, continueEndless(*exchange, octet(indication.apdu, 2), octet(indication.apdu, 3)), now);
    }
    return disturbed(*exchange, asDeliveries(m_station.receive(datagram, now)), now);
}

FaultyStation::Deliveries FaultyStation::continueEndless(Exchange& exchange, std::uint8_t acknowledged,
                                                         std::uint8_t window) {
    auto const hit = std::find_if(
        exchange.hits.begin(), exchange.hits.end(),
        [](Faults::Hit const& candidate) { return candidate.fault.kind == FaultKind::EndlessSegments; });
    Deliveries segments;
    if (!m_faults.isThere(hit->number)) {
        return segments;
    }
    window = std::clamp<std::uint8_t>(window, 1, kLargestWindow);
    std::uint64_t const count = hit->fault.count;
    for (std::uint8_t i = 1; i <= window && (count == 0 || exchange.sent < count); ++i) {
        Octets segment =
            datagrams::renumbered(*exchange.endless, static_cast<std::uint8_t>(acknowledged + i));
        segments.push_back({{exchange.peer.endpoint, std::move(segment)}, hit->fault.delay});
        ++exchange.sent;
    }
    return segments;
}

FaultyStation::Deliveries FaultyStation::disturbed(Exchange& exchange, Deliveries deliveries,
                                                   Moment const& now) {
    if (exchange.isOver) {
        return {};
    }
    for (Faults::Hit const& hit : exchange.hits) {
        if (m_faults.isThere(hit.number)) {
            disturb(exchange, hit, deliveries, now);
        }
    }
    return deliveries;
}

void FaultyStation::disturb(Exchange& exchange, Faults::Hit const& hit, Deliveries& deliveries,
                            Moment const& now) {
    switch (hit.fault.kind) {
        case FaultKind::PreviousAnswer:
            recall(exchange, deliveries);
            break;
        case FaultKind::LostSegment:
            loseSegment(exchange, hit.fault.segment, deliveries, now);
            break;
        case FaultKind::SegmentsOutOfOrder:
            swapSegments(exchange, hit.fault.segment, deliveries, now);
            break;
        case FaultKind::RepeatedSegment:
            if (auto const segment = segmentIn(deliveries, hit.fault.segment); segment != deliveries.end()) {
                copyBehind(deliveries, segment);
            }
            break;
        case FaultKind::SegmentsAtOnce:
            addAllSegments(exchange, deliveries, now);
            break;
        case FaultKind::EndlessSegments:
            makeEndless(exchange, hit.fault, deliveries);
            break;
        default:
            disturbEach(hit, deliveries, now);
            break;
    }
}

// The kinds that treat every datagram alike.
void FaultyStation::disturbEach(Faults::Hit const& hit, Deliveries& deliveries, Moment const& now) {
    Deliveries results;
    for (Delivery& delivery : deliveries) {
        switch (hit.fault.kind) {
            case FaultKind::Loss:
                if (m_faults.takes(hit.number, now)) {
                    continue;
                }
                break;
            case FaultKind::Delay:
                delivery.delay += hit.fault.delay;
                break;
            case FaultKind::OtherAddress:
                delivery.fromElsewhere = true;
                break;
            case FaultKind::Duplicate:
                if (deliveries.size() + results.size() < kMostDeliveries) {
                    results.push_back(delivery);
                }
                break;
            case FaultKind::Garbage:
                delivery.datagram.octets = garbage(hit);
                break;
            default:
                datagrams::spoil(hit.fault, delivery.datagram.octets);
                break;
        }
        results.push_back(std::move(delivery));
    }
    deliveries = std::move(results);
}

Octets FaultyStation::garbage(Faults::Hit const& hit) {
    Octets octets(
        m_faults.draw(hit.number, static_cast<std::uint32_t>(std::min(hit.fault.octets, kLongestGarbage))));
    for (char& one : octets) {
        one = static_cast<char>(m_faults.draw(hit.number, 255));
    }
    return octets;
}

void FaultyStation::recall(Exchange& exchange, Deliveries& deliveries) {
    if (deliveries.empty()) {
        return;
    }
    deliveries.clear();
    if (m_previous) {
        deliveries.push_back({{exchange.peer.endpoint, *m_previous}});
    }
    exchange.isOver = true;
}

void FaultyStation::makeEndless(Exchange& exchange, Fault const& fault, Deliveries& deliveries) {
    if (exchange.endless || deliveries.empty()) {
        return;
    }
    exchange.endless = datagrams::firstSegment(deliveries.front().datagram.octets);
    if (exchange.endless) {
        deliveries = {{{exchange.peer.endpoint, *exchange.endless}, fault.delay}};
        exchange.sent = 1;
    }
}

void FaultyStation::loseSegment(Exchange const& exchange, std::uint32_t segment, Deliveries& deliveries,
                                Moment const& now) {
    auto const lost = segmentIn(deliveries, segment);
    if (lost == deliveries.end()) {
        return;
    }
    deliveries.erase(lost);
    if (deliveries.empty()) {
        deliveries = acknowledged(exchange, segment, now);
    }
}

void FaultyStation::swapSegments(Exchange const& exchange, std::uint32_t segment, Deliveries& deliveries,
                                 Moment const& now) {
    auto first = segmentIn(deliveries, segment);
    if (first == deliveries.end()) {
        return;
    }
    if (first + 1 == deliveries.end()) {
        auto const place = first - deliveries.begin();
        for (Delivery& delivery : acknowledged(exchange, segment, now)) {
            deliveries.push_back(std::move(delivery));
        }
        first = deliveries.begin() + place;
    }
    if (first + 1 != deliveries.end()) {
        std::iter_swap(first, first + 1);
    }
}

// The station's segments up to the last; of later acknowledgements and repetitions nothing comes.
void FaultyStation::addAllSegments(Exchange& exchange, Deliveries& deliveries, Moment const& now) {
    while (!deliveries.empty() && deliveries.size() < kMostDeliveries) {
        auto const last = datagrams::sequenceNumber(deliveries.back().datagram.octets);
        Deliveries more = last ? acknowledged(exchange, *last, now) : Deliveries();
        if (more.empty()) {
            exchange.isOver = last.has_value();
            return;
        }
        deliveries.insert(deliveries.end(), more.begin(), more.end());
    }
}

// What the station sends when the client has acknowledged a segment in a window of one.
FaultyStation::Deliveries FaultyStation::acknowledged(Exchange const& exchange, std::uint32_t segment,
                                                      Moment const& now) {
    Octets apdu{kSegmentAck << 4, static_cast<char>(exchange.invokeId), static_cast<char>(segment), 1};
    Npdu const npdu{false, false,          0, m_station.device().settings().position, exchange.peer.remote,
                    255,   std::move(apdu)};
    return asDeliveries(m_station.receive({exchange.peer.endpoint, bvlc::unicast(npdu.encode())}, now));
}

// The exchange that an answer belongs to.
FaultyStation::Exchange* FaultyStation::exchangeOf(Datagram const& answer) {
    auto const npdu = Npdu::decode(Octets(answer.octets.begin() + 4, answer.octets.end()));
    auto const invokeId = datagrams::invokeId(answer.octets);
    return npdu && invokeId ? find({answer.peer, npdu->destination}, *invokeId) : nullptr;
}

FaultyStation::Exchange* FaultyStation::find(Peer const& peer, std::uint8_t invokeId) {
    auto const exchange = std::find_if(
        m_exchanges.begin(), m_exchanges.end(),
        [&](Exchange const& candidate) { return candidate.peer == peer && candidate.invokeId == invokeId; });
    return exchange == m_exchanges.end() ? nullptr : &*exchange;
}

void FaultyStation::forget(Peer const& peer, std::uint8_t invokeId) {
    m_exchanges.erase(std::remove_if(m_exchanges.begin(), m_exchanges.end(),
                                     [&](Exchange const& exchange) {
                                         return exchange.peer == peer && exchange.invokeId == invokeId;
                                     }),
                      m_exchanges.end());
}

// Keeps the new answer, if there is one, and takes the one before out for PreviousAnswer.
void FaultyStation::remember(std::uint32_t address, Deliveries const& deliveries) {
    m_previous.reset();
    if (deliveries.empty()) {
        return;
    }
    auto const memory = std::find_if(m_memories.begin(), m_memories.end(),
                                     [&](Memory const& candidate) { return candidate.address == address; });
    if (memory != m_memories.end()) {
        m_previous = std::move(memory->answer);
        m_memories.erase(memory);
    }
    if (m_memories.size() == kMostExchanges) {
        m_memories.pop_front();
    }
    m_memories.push_back({address, deliveries.front().datagram.octets});
}

}  // namespace simulator
