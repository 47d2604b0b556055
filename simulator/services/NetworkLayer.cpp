#include "NetworkLayer.h"

#include <algorithm>

#include "NetworkMessages.h"

namespace simulator {

namespace {

constexpr std::uint8_t NoRouteToNetwork = 1;  // clause 6.4.4

// The PDU type is the upper half of the octet. Type 3 with bit 3 set is a segment of a ComplexACK.
bool IsSegmentOfAck(Octets const& apdu) {
    return !apdu.empty() && (OctetValue(apdu[0]) & 0xF8) == 0x38;
}

Octets NetworkMessage(Octets content, std::uint8_t priority = 0,
                      std::optional<NetworkAddress> destination = {}) {
    return Npdu{true, false, priority, std::move(destination), std::nullopt, 255, std::move(content)}
        .Encode();
}

}  // namespace

NetworkLayer::NetworkLayer(std::optional<NetworkAddress> devicePosition, RouterSettings deviceRouter)
    : position(std::move(devicePosition)), router(std::move(deviceRouter)) {
    if (position && router.networks.empty()) {
        router.networks = {position->network};
    }
    std::uint16_t own = 1;
    while (LeadsTo(own)) {
        ++own;
    }
    router.ownNetwork = router.ownNetwork.value_or(own);
}

bool NetworkLayer::LeadsTo(std::uint16_t network) const {
    return std::find(router.networks.begin(), router.networks.end(), network) != router.networks.end();
}

NetworkLayer::Result NetworkLayer::Receive(Endpoint const& sender, bool isBroadcast,
                                           Octets const& octets) const {
    std::optional<Npdu> const npdu = Npdu::Decode(octets);
    if (!npdu) {
        return {};
    }
    if (npdu->isNetworkMessage) {
        return position ? ReceiveMessage(*npdu) : Result{};
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

// A message about routers, from the network of the router itself: it has no destination, or the global one,
// and What-Is-Network-Number, which is not routed, has no source either (clauses 6.4.1 and 6.4.19).
NetworkLayer::Result NetworkLayer::ReceiveMessage(Npdu const& npdu) const {
    if (npdu.destination && npdu.destination->network != GlobalBroadcast) {
        return {};
    }
    if (auto const asked = WhoIsRouterToNetwork::Decode(npdu.content)) {
        IAmRouterToNetwork answer{router.networks};
        if (asked->network) {
            answer.networks = {*asked->network};
        }
        bool const isKnown = !asked->network || LeadsTo(*asked->network);
        return isKnown ? Result{std::nullopt, NetworkMessage(answer.Encode()), true} : Result{};
    }
    if (WhatIsNetworkNumber::Decode(npdu.content) && !npdu.destination && !npdu.source) {
        constexpr bool isConfigured = true;
        return {std::nullopt, NetworkMessage(NetworkNumberIs{*router.ownNetwork, isConfigured}.Encode()),
                true};
    }
    return {};
}

// A request without a destination is for the router, which has no objects.
NetworkLayer::Result NetworkLayer::ReceiveAsRouter(Npdu const& npdu, Indication indication) const {
    if (!npdu.destination) {
        return {};
    }
    if (npdu.destination->network != position->network) {
        bool const isDropped = indication.isBroadcast || LeadsTo(npdu.destination->network);
        return isDropped ? Result{} : Result{std::nullopt, RejectNetwork(npdu)};
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
    RejectMessageToNetwork const reject{NoRouteToNetwork, npdu.destination->network};
    return NetworkMessage(reject.Encode(), npdu.priority, npdu.source);
}

Octets NetworkLayer::Send(Answer const& answer) const {
    Npdu const npdu{
        false, IsSegmentOfAck(answer.apdu), answer.priority, answer.peer.remote, position, 255, answer.apdu};
    return npdu.Encode();
}

}  // namespace simulator
