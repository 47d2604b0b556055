#include "NetworkLayer.h"

#include "OctetWriter.h"

namespace simulator {

namespace {

constexpr std::uint8_t kRejectMessageToNetwork = 0x03;  // clause 6.4.4
constexpr std::uint8_t kNoRouteToNetwork = 1;

// The APDU's type stands in its upper half; type 3 with bit 3 set is a segment of a ComplexACK.
bool isSegmentOfAck(Octets const& apdu) {
    return !apdu.empty() && (static_cast<unsigned char>(apdu[0]) & 0xF8) == 0x38;
}

}  // namespace

NetworkLayer::Result NetworkLayer::receive(Endpoint const& sender, bool isBroadcast,
                                           Octets const& octets) const {
    std::optional<Npdu> const npdu = Npdu::decode(octets);
    if (!npdu || npdu->isNetworkMessage) {
        return {};
    }
    Indication indication{{sender, npdu->source}, isBroadcast, npdu->priority, npdu->content};
    if (npdu->destination && npdu->destination->network == kGlobalBroadcast) {
        indication.isBroadcast = true;
        bool const passes = !m_position || npdu->hopCount > 1;
        return passes ? Result{indication, std::nullopt} : Result{};
    }
    if (m_position) {
        return receiveAsRouter(*npdu, indication);
    }
    return npdu->destination ? Result{} : Result{indication, std::nullopt};
}

// What comes without a destination is for the router itself, which serves no objects.
NetworkLayer::Result NetworkLayer::receiveAsRouter(Npdu const& npdu, Indication indication) const {
    if (!npdu.destination) {
        return {};
    }
    if (npdu.destination->network != m_position->network) {
        return indication.isBroadcast ? Result{} : Result{std::nullopt, rejectNetwork(npdu)};
    }
    if (npdu.hopCount <= 1) {
        return {};  // nothing is left after the router has taken its one (clause 6.2.3)
    }
    bool const toAll = npdu.destination->mac.empty();
    if (!toAll && npdu.destination->mac != m_position->mac) {
        return {};
    }
    indication.isBroadcast = toAll;
    return {indication, std::nullopt};
}

Octets NetworkLayer::rejectNetwork(Npdu const& npdu) const {
    OctetWriter content;
    content.u8(kRejectMessageToNetwork);
    content.u8(kNoRouteToNetwork);
    content.u16(npdu.destination->network);
    Npdu const answer{true, false, npdu.priority, npdu.source, std::nullopt, 255, content.take()};
    return answer.encode();
}

Octets NetworkLayer::send(Answer const& answer) const {
    Npdu const npdu{
        false,      isSegmentOfAck(answer.apdu), answer.priority, answer.peer.remote, m_position, 255,
        answer.apdu};
    return npdu.encode();
}

}  // namespace simulator
