#include "Station.h"

#include "Bvlc.h"

namespace simulator {

namespace {

bool IsUnconfirmed(Octets const& apdu) {
    return !apdu.empty() && OctetValue(apdu[0]) >> 4 == 1;
}

}  // namespace

std::vector<Datagram> Station::Receive(Datagram const& datagram, Moment const& now) {
    bvlc::Result const link = bvlc::Receive(datagram);
    if (link.answer) {
        return {{datagram.peer, *link.answer}};
    }
    if (!link.message) {
        return {};
    }
    NetworkLayer::Result const result =
        network.Receive(link.message->source, link.message->isBroadcast, link.message->npdu);
    if (result.answer) {
        return {RouterAnswer(link.message->source, result)};
    }
    if (!result.indication) {
        return {};
    }
    return Framed(application.Receive(*result.indication, now));
}

// The standard has these broadcast (clauses 6.4.2 and 6.4.20). A client whose port is not that of the device
// would not hear it, so they are unicasts unless the device file demands broadcasts.
Datagram Station::RouterAnswer(Endpoint const& sender, NetworkLayer::Result const& result) const {
    if (result.isForAll && device.Settings().broadcastsAnswers) {
        return {AllOfLink, bvlc::Broadcast(*result.answer)};
    }
    return {sender, bvlc::Unicast(*result.answer)};
}

std::vector<Datagram> Station::Framed(std::vector<Answer> answers) const {
    std::vector<Datagram> datagrams;
    for (Answer& answer : answers) {
        if (device.Settings().broadcastsAnswers && IsUnconfirmed(answer.apdu)) {
            answer.peer.remote = NetworkAddress{GlobalBroadcast, {}};
            datagrams.push_back({AllOfLink, bvlc::Broadcast(network.Send(answer))});
            continue;
        }
        datagrams.push_back({answer.peer.endpoint, bvlc::Unicast(network.Send(answer))});
    }
    return datagrams;
}

}  // namespace simulator
