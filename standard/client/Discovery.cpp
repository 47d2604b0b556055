#include "Discovery.h"

#include <algorithm>

#include "ForeignDevice.h"
#include "NetworkMessages.h"

namespace standard {

namespace {

using Way = DiscoverySettings::Way;

Octets Framed(Octets const& npdu, Way way) {
    switch (way) {
        case Way::Unicast:
            return bvlc::Unicast(npdu);
        case Way::ForeignDevice:
            return bvlc::DistributeBroadcast(npdu);
        default:
            return bvlc::Broadcast(npdu);
    }
}

bool IsNetwork(std::uint16_t number) {
    return number != 0 && number != GlobalBroadcast;
}

}  // namespace

Discovery::Discovery(Link& network, DiscoverySettings const& discoverySettings)
    : link(network), settings(discoverySettings) {}

DiscoveryResult Discovery::Run() {
    if (settings.way == Way::ForeignDevice) {
        result.failure = RegisterAsForeignDevice(link, settings);
    }
    begin = listenUntil = link.Now();
    if (result.failure.empty()) {
        Schedule();
        Collect();
    }
    Finish();
    return std::move(result);
}

void Discovery::Schedule() {
    for (unsigned round = 0; round < std::max(settings.rounds, 1u); ++round) {
        Link::Time const at = begin + round * settings.interval;
        if (settings.asksRouters) {
            waiting.insert({at, {Question::Kind::WhoIsRouter, {}, {}}});
        }
        bool const isGlobal = settings.asksRouters && settings.way != Way::Unicast && round % 2 == 0;
        waiting.insert(
            {at, {Question::Kind::WhoIs, isGlobal ? std::optional(GlobalBroadcast) : std::nullopt, {}}});
        Link::Time::duration later{};
        for (std::uint16_t const network : settings.networks) {
            later += settings.spacing;
            waiting.insert({at + later, {Question::Kind::WhoIs, network, {}}});
        }
    }
}

void Discovery::Collect() {
    Link::Time const end = begin + settings.longest;
    while (!link.IsStopped()) {
        AskDue();
        Link::Time const deadline = NextDeadline();
        if (link.Now() >= end || datagrams >= settings.mostDatagrams) {
            result.hasReachedLimit = true;
            return;
        }
        if (waiting.empty() && link.Now() >= deadline) {
            return;
        }
        if (auto const datagram = link.Receive(std::min(deadline, end))) {
            ++datagrams;
            Take(*datagram);
        }
    }
}

Link::Time Discovery::NextDeadline() const {
    return waiting.empty() ? listenUntil : waiting.begin()->first;
}

void Discovery::AskDue() {
    while (!waiting.empty() && waiting.begin()->first <= link.Now() && !link.IsStopped()) {
        Question const question = waiting.begin()->second;
        waiting.erase(waiting.begin());
        Ask(question);
    }
}

void Discovery::Ask(Question const& question) {
    Npdu npdu;
    if (question.network) {
        npdu.destination.emplace();
        npdu.destination->network = *question.network;
    }
    npdu.isNetworkMessage = question.kind == Question::Kind::WhoIsRouter;
    npdu.content = npdu.isNetworkMessage ? WhoIsRouterToNetwork().Encode() : WhoIs{settings.range}.Encode();
    link.Send({question.router.value_or(settings.target),
               Framed(npdu.Encode(), question.router ? Way::Unicast : settings.way)});
    listenUntil = link.Now() + settings.timeout;
    if (!npdu.isNetworkMessage) {
        ++asked[{question.router, question.network}];
    }
}

void Discovery::Take(Datagram const& datagram) {
    if (settings.way == Way::ForeignDevice && datagram.peer == settings.target) {
        auto const code = bvlc::ResultCodeOf(datagram.octets);
        if (code && *code != bvlc::Success) {
            result.failure = BbmdRefusal(settings.target, *code);
        }
    }
    auto const message = bvlc::Receive(datagram).message;
    auto const npdu = message ? Npdu::Decode(message->npdu) : std::nullopt;
    if (!npdu || (npdu->destination && npdu->destination->network != GlobalBroadcast)) {
        return;
    }
    if (npdu->isNetworkMessage) {
        TakeNetworkMessage(message->source, npdu->content);
    } else if (IsIAm(npdu->content)) {
        TakeIAm(*message, *npdu);
    }
}

void Discovery::TakeIAm(bvlc::Message const& message, Npdu const& npdu) {
    Peer const peer{message.source, npdu.source};
    auto const iAm = IAm::Decode(npdu.content);
    if (!iAm) {
        ++result.malformedCount;
        if (result.malformed.size() < DiscoveryResult::MostListed) {
            result.malformed.push_back({peer, npdu.content});
        }
    } else if (settings.range && !settings.range->Contains(iAm->device.instance)) {
        ++result.outsideCount;
    } else {
        Note(peer, *iAm, message.isBroadcast);
    }
}

void Discovery::Note(Peer const& peer, IAm const& iAm, bool isBroadcast) {
    NetworkAddress const remote = peer.remote.value_or(NetworkAddress());
    Key const key{peer.endpoint, remote.network, remote.mac, iAm.device.instance};
    auto const found = known.find(key);
    if (found == known.end() && result.devices.size() >= settings.mostDevices) {
        result.hasReachedLimit = true;
        return;
    }
    bool const isNew = found == known.end();
    std::size_t const index = isNew ? result.devices.size() : found->second;
    if (isNew) {
        known.emplace(key, index);
        result.devices.emplace_back();
        result.devices.back().iAm = iAm;
        result.devices.back().peer = peer;
        result.devices.back().after =
            std::chrono::duration_cast<std::chrono::milliseconds>(link.Now() - begin);
    }
    FoundDevice& device = result.devices[index];
    ++device.answers;
    device.usesBroadcast = device.usesBroadcast || isBroadcast;
    device.isContradictory = device.isContradictory || !(device.iAm == iAm);
    if (isNew && observer) {
        observer(device);
    }
}

void Discovery::TakeNetworkMessage(Endpoint const& from, Octets const& content) {
    if (auto const iAmRouter = IAmRouterToNetwork::Decode(content); iAmRouter && settings.asksRouters) {
        for (std::uint16_t const network : iAmRouter->networks) {
            NoteNetwork(from, network);
        }
    }
    auto const reject = RejectMessageToNetwork::Decode(content);
    if (reject && result.rejected.size() < DiscoveryResult::MostListed) {
        result.rejected.push_back({from, reject->network, reject->reason});
    }
}

// The network was asked in the first round already, if its router forwards global broadcasts.
void Discovery::NoteNetwork(Endpoint const& router, std::uint16_t network) {
    if (!IsNetwork(network) || networks.count({router, network}) > 0) {
        return;
    }
    if (networks.size() >= settings.mostNetworks) {
        result.hasReachedLimit = true;
        return;
    }
    networks.emplace(router, network);
    Link::Time first = link.Now();
    if (settings.rounds > 1 && settings.way != Way::Unicast) {
        first = std::max(first, begin + settings.interval);
    }
    first += static_cast<int>(networks.size()) * settings.spacing;
    for (unsigned round = 0; round < std::max(settings.rounds, 2u) - 1; ++round) {
        waiting.insert({first + round * settings.interval, {Question::Kind::WhoIs, network, router}});
    }
}

unsigned Discovery::QuestionsTo(Peer const& peer) const {
    auto const times = [this](std::optional<Endpoint> const& router, std::optional<std::uint16_t> network) {
        auto const found = asked.find({router, network});
        return found == asked.end() ? 0u : found->second;
    };
    unsigned const global = times(std::nullopt, GlobalBroadcast);
    if (!peer.remote) {
        return global + times(std::nullopt, std::nullopt);
    }
    std::uint16_t const network = peer.remote->network;
    return global + times(std::nullopt, network) + times(peer.endpoint, network);
}

void Discovery::Finish() {
    result.isStopped = link.IsStopped();
    for (FoundDevice& device : result.devices) {
        device.questions = QuestionsTo(device.peer);
    }
    std::sort(result.devices.begin(), result.devices.end(), [](auto const& left, auto const& right) {
        return left.Instance() != right.Instance() ? left.Instance() < right.Instance()
                                                   : IsBefore(left.peer, right.peer);
    });
    for (auto const& [endpoint, network] : networks) {
        if (result.routers.empty() || !(result.routers.back().endpoint == endpoint)) {
            result.routers.push_back({endpoint, {}});
        }
        result.routers.back().networks.push_back(network);
    }
}

}  // namespace standard
