#pragma once

#include <functional>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "Bvlc.h"
#include "DiscoveryResult.h"
#include "DiscoverySettings.h"
#include "Link.h"
#include "Npdu.h"

namespace standard {

// Finds devices: asks Who-Is, and for routers Who-Is-Router-To-Network and then Who-Is in each network that
// they name, and collects the answers until none is expected any more. It ends within the limits of the
// settings, whatever is on the network, and never throws. One run an object.
//
// The first round asks all networks at once (a global broadcast), the second one the local network and,
// through its router, each network that was named, and so on in turn: some devices do not answer global
// broadcasts, and some routers do not name their networks.
class Discovery {
public:
    // The link must outlive the discovery. A DiscoveryLink hears more than another one.
    Discovery(Link& network, DiscoverySettings const& discoverySettings);

    // Is called for each device when its first I-Am comes. The number of questions is not yet known.
    using Observer = std::function<void(FoundDevice const&)>;
    void OnDevice(Observer deviceObserver) { observer = std::move(deviceObserver); }

    DiscoveryResult Run();

private:
    using Key = std::tuple<Endpoint, std::uint16_t, Octets, std::uint32_t>;
    struct Question {
        enum class Kind { WhoIs, WhoIsRouter } kind = Kind::WhoIs;
        std::optional<std::uint16_t> network;  // DNET
        std::optional<Endpoint> router;        // asked directly, in place of the target
    };

    void Schedule();
    void Collect();
    Link::Time NextDeadline() const;
    void AskDue();
    void Ask(Question const& question);
    void Take(Datagram const& datagram);
    void TakeIAm(bvlc::Message const& message, Npdu const& npdu);
    void Note(Peer const& peer, IAm const& iAm, bool isBroadcast);
    void TakeNetworkMessage(Endpoint const& from, Octets const& content);
    void NoteNetwork(Endpoint const& router, std::uint16_t network);
    unsigned QuestionsTo(Peer const& peer) const;
    void Finish();

    Link& link;
    DiscoverySettings const settings;
    Observer observer;
    DiscoveryResult result;
    std::multimap<Link::Time, Question> waiting;
    std::map<Key, std::size_t> known;  // indices of the devices
    std::set<std::pair<Endpoint, std::uint16_t>> networks;
    std::map<std::pair<std::optional<Endpoint>, std::optional<std::uint16_t>>, unsigned> asked;
    Link::Time begin;
    Link::Time listenUntil;
    std::size_t datagrams = 0;
};

}  // namespace standard
