#include "FaultyStation.h"

#include <algorithm>

#include "AckFaults.h"
#include "Bvlc.h"
#include "ConfirmedRequest.h"
#include "DatagramFaults.h"
#include "DiscoveryFaults.h"

namespace simulator {

namespace {

constexpr std::size_t MostDeliveries = 512;
constexpr std::size_t LongestGarbage = 65507;  // octets of a UDP datagram
constexpr std::uint8_t LargestWindow = 127;
constexpr std::uint8_t SentByServer = 0x01;

enum PduType : std::uint8_t {
    ConfirmedRequestPdu = 0,
    UnconfirmedRequestPdu = 1,
    SegmentAckPdu = 4,
    AbortPdu = 7
};

std::uint8_t Octet(Octets const& octets, std::size_t place) {
    return static_cast<std::uint8_t>(octets[place]);
}

bool IsOfSegments(FaultKind kind) {
    return kind == FaultKind::LostSegment || kind == FaultKind::SegmentsOutOfOrder ||
           kind == FaultKind::RepeatedSegment || kind == FaultKind::SegmentsAtOnce ||
           kind == FaultKind::EndlessSegments;
}

bool ReplacesAnswer(FaultKind kind) {
    return kind == FaultKind::NetworkMessage || kind == FaultKind::Error || kind == FaultKind::Reject ||
           kind == FaultKind::Abort;
}

std::vector<Delivery> AsDeliveries(std::vector<Datagram> datagrams) {
    std::vector<Delivery> deliveries;
    for (Datagram& datagram : datagrams) {
        deliveries.push_back({std::move(datagram)});
    }
    return deliveries;
}

template <class Place>
void CopyBehind(std::vector<Delivery>& deliveries, Place place) {
    Delivery const copy = *place;
    deliveries.insert(place + 1, copy);
}

// The NPDU of a datagram that the network layer has accepted.
Npdu NpduOf(Datagram const& datagram) {
    return Npdu::Decode(bvlc::Receive(datagram).message->npdu).value();
}

Datagram WithApdu(Datagram const& datagram, Endpoint const& source, Octets apdu) {
    Npdu npdu = NpduOf(datagram);
    npdu.content = std::move(apdu);
    return {source, bvlc::Unicast(npdu.Encode())};
}

// A message of the network layer about the network that the request was for (clause 6.4).
Octets NetworkMessage(std::uint32_t type, Npdu const& request, Peer const& peer) {
    constexpr char reason = 1;
    std::uint16_t const network = request.destination ? request.destination->network : 0;
    Octets content{static_cast<char>(type), reason, static_cast<char>(network >> 8),
                   static_cast<char>(network)};
    return Npdu{true, false, request.priority, peer.remote, std::nullopt, 255, std::move(content)}.Encode();
}

auto SegmentIn(std::vector<Delivery>& deliveries, std::uint32_t number) {
    return std::find_if(deliveries.begin(), deliveries.end(), [number](Delivery const& delivery) {
        return datagrams::SequenceNumber(delivery.datagram.octets) == number;
    });
}

}  // namespace

FaultyStation::FaultyStation(Device device)
    : station(std::move(device)), network(station.GetDevice().Settings().position) {
    for (Fault const& fault : station.GetDevice().Settings().faults) {
        faults.Add(fault);
    }
    station.OnAck([this](std::uint8_t serviceChoice, Octets& content, std::size_t& longestApdu) {
        FilterAck(serviceChoice, content, longestApdu);
    });
}

FaultyStation::Deliveries FaultyStation::Receive(Datagram const& datagram, Moment const& now) {
    faults.Update(now);
    auto const link = bvlc::Receive(datagram).message;
    auto const indication =
        link ? network.Receive(link->source, link->isBroadcast, link->npdu).indication : std::nullopt;
    if (indication && !indication->apdu.empty()) {
        std::uint8_t const type = Octet(indication->apdu, 0) >> 4;
        if (type == ConfirmedRequestPdu && !indication->isBroadcast) {
            return ReceiveRequest(datagram, *indication, now);
        }
        if (type == UnconfirmedRequestPdu) {
            return ReceiveUnconfirmed(datagram, now);
        }
        bool const hasInvokeId = indication->apdu.size() >= 2;
        bool const isOfClient = (Octet(indication->apdu, 0) & SentByServer) == 0;
        if (type == SegmentAckPdu && isOfClient && indication->apdu.size() >= 4) {
            return ReceiveSegmentAck(datagram, *indication, now);
        }
        if (type == AbortPdu && isOfClient && hasInvokeId) {
            Forget(indication->peer, Octet(indication->apdu, 1));
        }
    }
    return AsDeliveries(station.Receive(datagram, now));
}

// Repeated datagrams of an exchange are disturbed together, in the same way as the first time.
FaultyStation::Deliveries FaultyStation::Tick(Moment const& now) {
    faults.Update(now);
    Deliveries all;
    Deliveries ofOne;
    Exchange* last = nullptr;
    auto const finish = [&] {
        Deliveries const sent = last ? Disturbed(*last, std::move(ofOne), now) : std::move(ofOne);
        all.insert(all.end(), sent.begin(), sent.end());
        ofOne.clear();
    };
    for (Delivery& delivery : AsDeliveries(station.Tick(now))) {
        Exchange* const exchange = ExchangeOf(delivery.datagram);
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

FaultyStation::Deliveries FaultyStation::ReceiveRequest(Datagram const& datagram,
                                                        NetworkLayer::Indication const& indication,
                                                        Moment const& now) {
    auto const request = ConfirmedRequest::Decode(indication.apdu);
    if (!request) {
        return AsDeliveries(station.Receive(datagram, now));
    }
    Forget(indication.peer, request->invokeId);
    Exchange exchange;
    exchange.peer = indication.peer;
    exchange.invokeId = request->invokeId;
    exchange.hits = faults.Meet(acks::RequestOf(indication.apdu), now);
    std::stable_partition(exchange.hits.begin(), exchange.hits.end(),
                          [](Faults::Hit const& hit) { return IsOfSegments(hit.fault.kind); });
    Deliveries deliveries = Serve(datagram, indication, exchange, now);
    Remember(indication.peer.endpoint.address, deliveries);
    deliveries = Disturbed(exchange, std::move(deliveries), now);
    if (!exchange.hits.empty()) {
        if (exchanges.size() == MostExchanges) {
            exchanges.pop_front();
        }
        exchanges.push_back(std::move(exchange));
    }
    return deliveries;
}

// Only a request that the device answers counts for the faults.
FaultyStation::Deliveries FaultyStation::ReceiveUnconfirmed(Datagram const& datagram, Moment const& now) {
    Deliveries deliveries = AsDeliveries(station.Receive(datagram, now));
    if (deliveries.empty()) {
        return deliveries;
    }
    for (Faults::Hit const& hit : faults.Meet({FaultScope::WhoIs, std::nullopt}, now)) {
        if (hit.fault.kind == FaultKind::Silence) {
            return {};
        }
        DisturbEach(hit, deliveries, now);
    }
    return deliveries;
}

// The answer of the station, or that of the first fault that replaces it.
FaultyStation::Deliveries FaultyStation::Serve(Datagram const& datagram,
                                               NetworkLayer::Indication const& indication, Exchange& exchange,
                                               Moment const& now) {
    Octets apdu = indication.apdu;
    for (Faults::Hit const& hit : exchange.hits) {
        FaultKind const kind = hit.fault.kind;
        if (kind == FaultKind::Silence) {
            exchange.isOver = true;
            return {};
        }
        std::uint32_t const code = hit.fault.code.value_or(RowOf(kind).code);
        if (ReplacesAnswer(kind)) {
            auto const refusal = acks::Refusal(hit.fault, indication.apdu);
            Octets const npdu = refusal ? network.Send({indication.peer, indication.priority, *refusal})
                                        : NetworkMessage(code, NpduOf(datagram), indication.peer);
            return {{{indication.peer.endpoint, bvlc::Unicast(npdu)}}};
        }
        if (kind == FaultKind::ChangingObjectList) {
            station.ChangeObjectList();
        }
        if (kind == FaultKind::UnaskedProperty) {
            apdu = acks::AskingFor(code, apdu);
        }
    }
    served = &exchange;
    Datagram const asked =
        apdu == indication.apdu ? datagram : WithApdu(datagram, indication.peer.endpoint, std::move(apdu));
    Deliveries deliveries = AsDeliveries(station.Receive(asked, now));
    served = nullptr;
    return deliveries;
}

void FaultyStation::FilterAck(std::uint8_t serviceChoice, Octets& content, std::size_t& longestApdu) const {
    if (served) {
        for (Faults::Hit const& hit : served->hits) {
            acks::Spoil(hit.fault, serviceChoice, content, longestApdu);
        }
    }
}

FaultyStation::Deliveries FaultyStation::ReceiveSegmentAck(Datagram const& datagram,
                                                           NetworkLayer::Indication const& indication,
                                                           Moment const& now) {
    Exchange* const exchange = Find(indication.peer, Octet(indication.apdu, 1));
    if (!exchange) {
        return AsDeliveries(station.Receive(datagram, now));
    }
    if (exchange->endless) {
        return Disturbed(
            *exchange, ContinueEndless(*exchange, Octet(indication.apdu, 2), Octet(indication.apdu, 3)), now);
    }
    return Disturbed(*exchange, AsDeliveries(station.Receive(datagram, now)), now);
}

FaultyStation::Deliveries FaultyStation::ContinueEndless(Exchange& exchange, std::uint8_t acknowledged,
                                                         std::uint8_t window) {
    auto const hit = std::find_if(
        exchange.hits.begin(), exchange.hits.end(),
        [](Faults::Hit const& candidate) { return candidate.fault.kind == FaultKind::EndlessSegments; });
    Deliveries segments;
    if (!faults.IsThere(hit->number)) {
        return segments;
    }
    window = std::clamp<std::uint8_t>(window, 1, LargestWindow);
    std::uint64_t const count = hit->fault.count;
    for (std::uint8_t i = 1; i <= window && (count == 0 || exchange.sent < count); ++i) {
        Octets segment =
            datagrams::Renumbered(*exchange.endless, static_cast<std::uint8_t>(acknowledged + i));
        segments.push_back({{exchange.peer.endpoint, std::move(segment)}, hit->fault.delay});
        ++exchange.sent;
    }
    return segments;
}

FaultyStation::Deliveries FaultyStation::Disturbed(Exchange& exchange, Deliveries deliveries,
                                                   Moment const& now) {
    if (exchange.isOver) {
        return {};
    }
    for (Faults::Hit const& hit : exchange.hits) {
        if (faults.IsThere(hit.number)) {
            Disturb(exchange, hit, deliveries, now);
        }
    }
    return deliveries;
}

void FaultyStation::Disturb(Exchange& exchange, Faults::Hit const& hit, Deliveries& deliveries,
                            Moment const& now) {
    switch (hit.fault.kind) {
        case FaultKind::PreviousAnswer:
            Recall(exchange, deliveries);
            break;
        case FaultKind::LostSegment:
            LoseSegment(exchange, hit.fault.segment, deliveries, now);
            break;
        case FaultKind::SegmentsOutOfOrder:
            SwapSegments(exchange, hit.fault.segment, deliveries, now);
            break;
        case FaultKind::RepeatedSegment:
            if (auto const segment = SegmentIn(deliveries, hit.fault.segment); segment != deliveries.end()) {
                CopyBehind(deliveries, segment);
            }
            break;
        case FaultKind::SegmentsAtOnce:
            AddAllSegments(exchange, deliveries, now);
            break;
        case FaultKind::EndlessSegments:
            MakeEndless(exchange, hit.fault, deliveries);
            break;
        default:
            DisturbEach(hit, deliveries, now);
            break;
    }
}

// The kinds that change every datagram in the same way.
void FaultyStation::DisturbEach(Faults::Hit const& hit, Deliveries& deliveries, Moment const& now) {
    Deliveries results;
    for (Delivery& delivery : deliveries) {
        switch (hit.fault.kind) {
            case FaultKind::Loss:
                if (faults.Takes(hit.number, now)) {
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
                if (deliveries.size() + results.size() < MostDeliveries) {
                    results.push_back(delivery);
                }
                break;
            case FaultKind::Garbage:
                delivery.datagram.octets = Garbage(hit);
                break;
            case FaultKind::OtherInstance:
            case FaultKind::WrongStation:
                discovery::Spoil(hit.fault, delivery.datagram.octets);
                break;
            default:
                datagrams::Spoil(hit.fault, delivery.datagram.octets);
                break;
        }
        results.push_back(std::move(delivery));
    }
    deliveries = std::move(results);
}

Octets FaultyStation::Garbage(Faults::Hit const& hit) {
    Octets octets(
        faults.Draw(hit.number, static_cast<std::uint32_t>(std::min(hit.fault.octets, LongestGarbage))));
    for (char& one : octets) {
        one = static_cast<char>(faults.Draw(hit.number, 255));
    }
    return octets;
}

void FaultyStation::Recall(Exchange& exchange, Deliveries& deliveries) {
    if (deliveries.empty()) {
        return;
    }
    deliveries.clear();
    if (previous) {
        deliveries.push_back({{exchange.peer.endpoint, *previous}});
    }
    exchange.isOver = true;
}

void FaultyStation::MakeEndless(Exchange& exchange, Fault const& fault, Deliveries& deliveries) {
    if (exchange.endless || deliveries.empty()) {
        return;
    }
    exchange.endless = datagrams::FirstSegment(deliveries.front().datagram.octets);
    if (exchange.endless) {
        deliveries = {{{exchange.peer.endpoint, *exchange.endless}, fault.delay}};
        exchange.sent = 1;
    }
}

void FaultyStation::LoseSegment(Exchange const& exchange, std::uint32_t segment, Deliveries& deliveries,
                                Moment const& now) {
    auto const lost = SegmentIn(deliveries, segment);
    if (lost == deliveries.end()) {
        return;
    }
    deliveries.erase(lost);
    if (deliveries.empty()) {
        deliveries = Acknowledged(exchange, segment, now);
    }
}

void FaultyStation::SwapSegments(Exchange const& exchange, std::uint32_t segment, Deliveries& deliveries,
                                 Moment const& now) {
    auto first = SegmentIn(deliveries, segment);
    if (first == deliveries.end()) {
        return;
    }
    if (first + 1 == deliveries.end()) {
        auto const place = first - deliveries.begin();
        for (Delivery& delivery : Acknowledged(exchange, segment, now)) {
            deliveries.push_back(std::move(delivery));
        }
        first = deliveries.begin() + place;
    }
    if (first + 1 != deliveries.end()) {
        std::iter_swap(first, first + 1);
    }
}

// All segments of the station. Later acknowledgements and repetitions cause no datagram.
void FaultyStation::AddAllSegments(Exchange& exchange, Deliveries& deliveries, Moment const& now) {
    while (!deliveries.empty() && deliveries.size() < MostDeliveries) {
        auto const last = datagrams::SequenceNumber(deliveries.back().datagram.octets);
        Deliveries more = last ? Acknowledged(exchange, *last, now) : Deliveries();
        if (more.empty()) {
            exchange.isOver = last.has_value();
            return;
        }
        deliveries.insert(deliveries.end(), more.begin(), more.end());
    }
}

// The datagrams of the station after the client has acknowledged a segment in a window of one.
FaultyStation::Deliveries FaultyStation::Acknowledged(Exchange const& exchange, std::uint32_t segment,
                                                      Moment const& now) {
    Octets apdu{SegmentAckPdu << 4, static_cast<char>(exchange.invokeId), static_cast<char>(segment), 1};
    Npdu const npdu{false, false,          0, station.GetDevice().Settings().position, exchange.peer.remote,
                    255,   std::move(apdu)};
    return AsDeliveries(station.Receive({exchange.peer.endpoint, bvlc::Unicast(npdu.Encode())}, now));
}

// The exchange to which an answer belongs.
FaultyStation::Exchange* FaultyStation::ExchangeOf(Datagram const& answer) {
    auto const npdu = Npdu::Decode(Octets(answer.octets.begin() + 4, answer.octets.end()));
    auto const invokeId = datagrams::InvokeId(answer.octets);
    return npdu && invokeId ? Find({answer.peer, npdu->destination}, *invokeId) : nullptr;
}

FaultyStation::Exchange* FaultyStation::Find(Peer const& peer, std::uint8_t invokeId) {
    auto const exchange = std::find_if(exchanges.begin(), exchanges.end(), [&](Exchange const& candidate) {
        return candidate.peer == peer && candidate.invokeId == invokeId;
    });
    return exchange == exchanges.end() ? nullptr : &*exchange;
}

void FaultyStation::Forget(Peer const& peer, std::uint8_t invokeId) {
    exchanges.erase(std::remove_if(exchanges.begin(), exchanges.end(),
                                   [&](Exchange const& exchange) {
                                       return exchange.peer == peer && exchange.invokeId == invokeId;
                                   }),
                    exchanges.end());
}

// Keeps the new answer, if there is one, and moves the one before it to `previous` for PreviousAnswer.
void FaultyStation::Remember(std::uint32_t address, Deliveries const& deliveries) {
    previous.reset();
    if (deliveries.empty()) {
        return;
    }
    auto const memory = std::find_if(memories.begin(), memories.end(),
                                     [&](Memory const& candidate) { return candidate.address == address; });
    if (memory != memories.end()) {
        previous = std::move(memory->answer);
        memories.erase(memory);
    }
    if (memories.size() == MostExchanges) {
        memories.pop_front();
    }
    memories.push_back({address, deliveries.front().datagram.octets});
}

}  // namespace simulator
