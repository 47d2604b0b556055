#pragma once

#include <optional>
#include <string>

#include "AnswerPdu.h"
#include "ClientSettings.h"
#include "Exchange.h"
#include "Link.h"
#include "Pace.h"
#include "PastRequests.h"

namespace standard {

// The parameters of an ack, or the reason why there is none.
struct Ack {
    std::optional<Failure> failure;
    Octets content;
};

// One confirmed request of a client (clause 5.4.4): its retries, the segments of its answer, and everything
// else that arrives meanwhile.
class Transaction {
public:
    // The references must outlive the transaction. Adds what it sees to the exchange.
    Transaction(Link& network, ClientSettings const& clientSettings, Pace& requestPace,
                PastRequests const& pastRequests, Peer const& peer, Exchange& exchangeOfRequest)
        : link(network),
          settings(clientSettings),
          pace(requestPace),
          past(pastRequests),
          device(peer),
          exchange(exchangeOfRequest) {}

    // `request` is the APDU with that invoke id. The answer to WriteProperty is a SimpleACK, that to the
    // other services a ComplexACK.
    Ack Run(std::uint8_t invokeId, ServiceChoice service, Octets const& request);

private:
    struct Received {
        Peer from;
        AnswerPdu pdu;
        Octets apdu;
    };

    void AwaitTurn();
    Ack SendAndWait(Octets const& request);
    Ack Finish(Received const& answer);
    Ack CollectSegments(Received const& first);
    std::optional<Received> Next(Link::Time deadline);
    std::optional<Received> Examine(Datagram const& datagram);
    void NoteOther(Peer const& from, AnswerPdu const& answer);
    void NoteRouter(Endpoint const& from, Octets const& message);
    void Send(Octets const& apdu, bool expectsReply);
    // Why there was no answer, as far as it is known.
    Ack Unanswered() const;
    bool IsExpected(Peer const& from) const;

    Link& link;
    ClientSettings const& settings;
    Pace& pace;
    PastRequests const& past;
    Peer const& device;
    Exchange& exchange;
    std::uint8_t id = 0;
    std::uint8_t serviceChoice = 0;
    Link::Time begin;
    Link::Time sent;
    std::size_t datagrams = 0;
};

}  // namespace standard
