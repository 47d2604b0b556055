#include "Station.h"

#include "Bvlc.h"

namespace simulator {

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
        return {{link.message->source, bvlc::Unicast(*result.answer)}};
    }
    if (!result.indication) {
        return {};
    }
    return Framed(application.Receive(*result.indication, now));
}

std::vector<Datagram> Station::Framed(std::vector<Answer> const& answers) const {
    std::vector<Datagram> datagrams;
    for (Answer const& answer : answers) {
        datagrams.push_back({answer.peer.endpoint, bvlc::Unicast(network.Send(answer))});
    }
    return datagrams;
}

}  // namespace simulator
