#include "NetworkLayer.h"

#include "OctetWriter.h"

namespace simulator {

namespace {

constexpr std::uint8_t RejectMessageToNetwork = 0x03;  // clause 6.4.4
constexpr std::uint8_t NoRouteToNetwork = 1;

// The PDU type is the upper half of the octet. Type 3 with bit 3 set is a segment of a ComplexACK.
bool IsSegmentOfAck(Octets const& apdu) {
    return !apdu.empty() && (OctetValue(apdu[0]) & 0xF8) == 0x38;
}

}  // namespace

NetworkLayer::Result NetworkLayer::Receive(Endpoint const& sender, bool isBroadcast,
                                           Octets const& octets) const {
    std::optional<Npdu> const npdu = Npdu::Decode(octets);
    if (!npdu || npdu->isNetworkMessage) {
        return {};
    }
    Indication indication{{sender, npdu->source}, isBroadcast, npdu->priority, npdu->content};
    if (npdu->destination && npdu->destination->network == GlobalBroadcast) {
        indication.isBroadcast = true;
        bool const passes = !position || npdu->hopCount > 1;
        return passes ? Result{indication, std::nullopt} : Result{};
    }
    if (position) {
        return ReceiveAsRouter(*npdu, indication);
    }
    return npdu->destination ? Result{} : Result{indication, std::nullopt};
}

// A request without a destination is for the router, which has no objects.
NetworkLayer::Result NetworkLayer::ReceiveAsRouter(Npdu const& npdu, Indication indication) const {
    if (!npdu.destination) {
        return {};
    }
    if (npdu.destination->network != position->network) {
        return indication.isBroadcast ? Result{} : Result{std::nullopt, RejectNetwork(npdu)};
    }
    if (npdu.hopCount <= 1) {
        return {};  // the router's decrement leaves nothing (clause 6.2.3)
    }
    bool const toAll = npdu.destination->mac.empty();
    if (!toAll && npdu.destination->mac != position->mac) {
        return {};
    }
    indication.isBroadcast = toAll;
    return {indication, std::nullopt};
}

Octets NetworkLayer::RejectNetwork(Npdu const& npdu) const {
    OctetWriter content;
    content.U8(RejectMessageToNetwork);
    content.U8(NoRouteToNetwork);
    content.U16(npdu.destination->network);
    Npdu const answer{true, false, npdu.priority, npdu.source, std::nullopt, 255, content.Take()};
    return answer.Encode();
}

Octets NetworkLayer::Send(Answer const& answer) const {
    Npdu const npdu{
        false, IsSegmentOfAck(answer.apdu), answer.priority, answer.peer.remote, position, 255, answer.apdu};
    return npdu.Encode();
}

}  // namespace simulator
