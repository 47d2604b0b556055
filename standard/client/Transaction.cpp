#include "Transaction.h"

#include <algorithm>

#include "Bvlc.h"
#include "NetworkMessages.h"
#include "Npdu.h"
#include "ReadRequests.h"
#include "SegmentCollector.h"

namespace standard {

namespace {

std::chrono::microseconds Microseconds(Link::Time::duration duration) {
    return std::chrono::duration_cast<std::chrono::microseconds>(duration);
}

Ack Failed(Failure::Kind kind, std::string detail) {
    return {Failure{kind, 0, 0, std::move(detail)}, {}};
}

}  // namespace

Ack Transaction::Run(std::uint8_t invokeId, ServiceChoice service, Octets const& request) {
    id = invokeId;
    serviceChoice = static_cast<std::uint8_t>(service);
    AwaitTurn();
    begin = sent = link.Now();
    Ack const ack = SendAndWait(request);
    Link::Time const end = link.Now();
    exchange.duration = Microseconds(end - begin);
    exchange.sinceSent = Microseconds(end - sent);
    return ack;
}

// What arrives before the request is not an answer to it.
void Transaction::AwaitTurn() {
    Link::Time const turn = pace.NextTurn(device);
    while (link.Now() < turn && !link.IsStopped() && datagrams < settings.mostDatagrams) {
        exchange.foreignCount += Next(turn) ? 1 : 0;
    }
}

Ack Transaction::SendAndWait(Octets const& request) {
    Link::Time const end = begin + settings.longestExchange;
    while (exchange.attempts <= settings.retries && !link.IsStopped() && link.Now() < end &&
           datagrams < settings.mostDatagrams) {
        ++exchange.attempts;
        sent = link.Now();
        Send(request, true);
        pace.NoteSent(device, sent);
        Link::Time const deadline = std::min(std::max(sent + settings.timeout, pace.NextTurn(device)), end);
        auto answer = Next(deadline);
        // A segment from the middle of an answer is not the beginning of one.
        while (answer && answer->pdu.isSegmented && answer->pdu.sequenceNumber != 0) {
            ++exchange.foreignCount;
            answer = Next(deadline);
        }
        if (answer) {
            exchange.answeredBy = answer->from;
            return Finish(*answer);
        }
    }
    return Unanswered();
}

Ack Transaction::Finish(Received const& answer) {
    if (answer.pdu.failure) {
        return {answer.pdu.failure, {}};
    }
    bool const isWrite = serviceChoice == static_cast<std::uint8_t>(ServiceChoice::WriteProperty);
    if (isWrite != (answer.pdu.kind == AnswerPdu::Kind::SimpleAck)) {
        return Failed(Failure::Kind::Malformed, isWrite ? "an ack with values" : "an ack without values");
    }
    if (isWrite) {
        return {};
    }
    if (answer.pdu.isSegmented) {
        return CollectSegments(answer);
    }
    return {std::nullopt, Octets(answer.apdu.begin() + static_cast<std::ptrdiff_t>(answer.pdu.contentAt),
                                 answer.apdu.end())};
}

Ack Transaction::CollectSegments(Received const& first) {
    constexpr int segmentTimeouts = 4;  // clause 5.4.4.3
    SegmentCollector collector(settings.windowSize, settings.longestAnswer);
    Link::Time const end = begin + settings.longestExchange;
    for (std::optional<Received> segment = first; segment;
         segment = Next(std::min(link.Now() + segmentTimeouts * settings.segmentTimeout, end))) {
        if (!segment->pdu.isSegmented) {
            return Finish(*segment);
        }
        auto const ack = collector.Take(segment->pdu, segment->apdu);
        exchange.segments = collector.Count();
        exchange.repeatedSegments = collector.Repeated();
        exchange.lostSegments = collector.Gaps();
        if (collector.IsTooLong()) {
            Send(requests::Abort(id, AbortReason::BufferOverflow), false);
            return Failed(Failure::Kind::Malformed,
                          "longer than " + std::to_string(settings.longestAnswer) + " octets");
        }
        if (ack) {
            Send(requests::SegmentAck(id, ack->sequenceNumber, ack->windowSize, ack->isNegative), false);
        }
        if (collector.IsComplete()) {
            return {std::nullopt, collector.Content()};
        }
    }
    return link.IsStopped() ? Failed(Failure::Kind::Stopped, {})
                            : Failed(Failure::Kind::Incomplete,
                                     "the segments stopped after " + std::to_string(collector.Count()));
}

Ack Transaction::Unanswered() const {
    std::string detail;
    if (link.IsStopped()) {
        return Failed(Failure::Kind::Stopped, {});
    }
    if (datagrams >= settings.mostDatagrams) {
        detail = std::to_string(datagrams) + " datagrams, but no complete answer among them";
    } else if (exchange.routerReject) {
        detail = "the router does not reach network " + std::to_string(device.remote->network) + ", reason " +
                 std::to_string(*exchange.routerReject);
    } else if (!exchange.others.empty()) {
        detail = "another station answers: " + exchange.others.front().Text();
    } else if (exchange.foreignCount > 0) {
        detail = exchange.foreignCount == 1
                     ? "a datagram came that is not an answer"
                     : std::to_string(exchange.foreignCount) + " datagrams came that are not an answer";
    }
    return Failed(Failure::Kind::Silent, std::move(detail));
}

std::optional<Transaction::Received> Transaction::Next(Link::Time deadline) {
    while (datagrams < settings.mostDatagrams) {
        auto const datagram = link.Receive(deadline);
        if (!datagram) {
            return std::nullopt;
        }
        ++datagrams;
        if (auto answer = Examine(*datagram)) {
            return answer;
        }
        // A link may have a datagram at any time, so the deadline is checked here too.
        if (link.Now() >= deadline) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

// The answer in the datagram, if it is one to this request.
std::optional<Transaction::Received> Transaction::Examine(Datagram const& datagram) {
    auto message = bvlc::Receive(datagram).message;
    auto npdu = message && !message->isBroadcast ? Npdu::Decode(message->npdu) : std::nullopt;
    if (npdu && npdu->isNetworkMessage) {
        NoteRouter(datagram.peer, npdu->content);
        return std::nullopt;
    }
    bool const isForUs = npdu && (!npdu->destination || npdu->destination->network == GlobalBroadcast);
    auto const answer = isForUs ? AnswerPdu::Decode(npdu->content) : std::nullopt;
    if (!answer || answer->kind == AnswerPdu::Kind::SegmentAck) {
        ++exchange.foreignCount;
        return std::nullopt;
    }
    Peer const from{datagram.peer, npdu->source};
    bool const hasService = answer->kind == AnswerPdu::Kind::SimpleAck ||
                            answer->kind == AnswerPdu::Kind::ComplexAck ||
                            answer->kind == AnswerPdu::Kind::Error;
    bool const isOurs = answer->invokeId == id && (!hasService || answer->serviceChoice == serviceChoice);
    if (!isOurs || !IsExpected(from)) {
        NoteOther(from, *answer);
        return std::nullopt;
    }
    return Received{from, *answer, std::move(npdu->content)};
}

// The first station that answers sends the whole answer.
bool Transaction::IsExpected(Peer const& from) const {
    return exchange.answeredBy ? from == *exchange.answeredBy : IsAmong(from, device);
}

// An answer that is not the expected one.
void Transaction::NoteOther(Peer const& from, AnswerPdu const& answer) {
    PastRequests::Request const* const earlier = past.Find(from, answer.invokeId);
    if (earlier && !earlier->isAnswered) {
        ++exchange.lateCount;
        if (exchange.late.size() < Exchange::MostListed) {
            exchange.late.push_back({Microseconds(link.Now() - earlier->sentAt), earlier->first});
        }
    } else if (!earlier && answer.invokeId == id && !IsExpected(from)) {
        ++exchange.otherCount;
        bool const isKnown =
            std::find(exchange.others.begin(), exchange.others.end(), from) != exchange.others.end();
        if (!isKnown && exchange.others.size() < Exchange::MostListed) {
            exchange.others.push_back(from);
        }
    } else {
        ++exchange.foreignCount;
    }
}

void Transaction::NoteRouter(Endpoint const& from, Octets const& message) {
    auto const reject = RejectMessageToNetwork::Decode(message);
    bool const isFromRouter = device.remote && from == device.endpoint;
    if (reject && isFromRouter && reject->network == device.remote->network) {
        exchange.routerReject = reject->reason;
    } else {
        ++exchange.foreignCount;
    }
}

void Transaction::Send(Octets const& apdu, bool expectsReply) {
    Npdu npdu;
    npdu.expectsReply = expectsReply;
    npdu.destination = exchange.answeredBy ? exchange.answeredBy->remote : device.remote;
    npdu.content = apdu;
    link.Send({device.endpoint, bvlc::Unicast(npdu.Encode())});
}

}  // namespace standard
