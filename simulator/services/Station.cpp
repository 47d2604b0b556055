#include "Station.h"

#include "Bvlc.h"

namespace simulator {

std::vector<Datagram> Station::receive(Datagram const& datagram, Moment const& now) {
    bvlc::Result const link = bvlc::receive(datagram);
    if (link.answer) {
        return {{datagram.peer, *link.answer}};
    }
    if (!link.message) {
        return {};
    }
    NetworkLayer::Result const network =
        m_network.receive(link.message->source, link.message->isBroadcast, link.message->npdu);
    if (network.answer) {
        return {{link.message->source, bvlc::unicast(*network.answer)}};
    }
    if (!network.indication) {
        return {};
    }
    return framed(m_application.receive(*network.indication, now));
}

std::vector<Datagram> Station::framed(std::vector<Answer> const& answers) const {
    std::vector<Datagram> datagrams;
    for (Answer const& answer : answers) {
        datagrams.push_back({answer.peer.endpoint, bvlc::unicast(m_network.send(answer))});
    }
    return datagrams;
}

}  // namespace simulator
