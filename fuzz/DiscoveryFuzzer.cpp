// A discovery on a network that the input plays, and the object list of a device there. For every input: both
// end within their bounds of time, datagrams and results; only Who-Is, Who-Is-Router-To-Network and
// registrations are sent, and then reads; devices and routers are in order and each is there once; a device
// that answers is found.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "Bvlc.h"
#include "Discovery.h"
#include "Hex.h"
#include "Input.h"
#include "NetworkMessages.h"
#include "ObjectList.h"
#include "Require.h"

using namespace standard;
using fuzz::Input;
using fuzz::Require;
using std::chrono::milliseconds;
using Way = DiscoverySettings::Way;

namespace {

Endpoint const Target{0x0A0000FF, 47808};
Endpoint const Senders[] = {{0x0A000001, 47808}, {0x0A000002, 47808}, {0x0A000002, 1024}, Target};

Octets Joined(Octets left, Octets const& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// Plays the input. Each delivery begins with a control octet: bits 0 to 2 its kind (0: nothing until the
// deadline), 3 and 4 its sender, 5 and 6 the time before it, 7 it is delivered for ever.
class PlayedLink : public Link {
public:
    explicit PlayedLink(Input& played) : input(played) {}

    void Send(Datagram const& datagram) override {
        sent.push_back(datagram);
        auto const message = bvlc::Receive(datagram).message;
        auto const npdu = message ? Npdu::Decode(message->npdu) : std::nullopt;
        bool const isConfirmed = npdu && !npdu->isNetworkMessage && npdu->content.size() >= 4 &&
                                 OctetValue(npdu->content[0]) >> 4 == 0;
        if (isConfirmed) {
            invokeId = npdu->content[2];
            service = npdu->content[3];
        }
    }

    std::optional<Datagram> Receive(Time deadline) override {
        unsigned const control = repeated || input.IsEmpty() ? 0 : input.Octet();
        if (repeated) {
            now += milliseconds(1);
            return repeated;
        }
        if ((control & 7) == 0) {
            now = std::max(now, deadline);
            return std::nullopt;
        }
        now += milliseconds(25 * (control >> 5 & 3));
        Datagram const datagram{Senders[control >> 3 & 3], Delivered(control & 7)};
        if ((control & 0x80) != 0) {
            repeated = datagram;
        }
        return datagram;
    }

    Time Now() const override { return now; }
    void StopRepeating() { repeated.reset(); }
    // Every datagram from now on.
    void Repeat(Octets const& octets) { repeated = Datagram{Senders[0], octets}; }

    std::vector<Datagram> sent;

private:
    Octets Delivered(unsigned kind) {
        Npdu npdu;
        switch (kind) {
            case 1:
                return Counted();
            case 2:
                npdu.content = IAm{{8, input.Below(8)}, 206 + input.Octet(), 3, 15}.Encode();
                return bvlc::Broadcast(npdu.Encode());
            case 3:
                npdu.source.emplace();
                npdu.source->network = static_cast<std::uint16_t>(1 + input.Below(4));
                npdu.source->mac = {'\x0B'};
                npdu.content = IAm{{8, input.Below(8)}, 480, 3, 15}.Encode();
                return bvlc::Forwarded(Senders[1], npdu.Encode());
            case 4:
                npdu.isNetworkMessage = true;
                npdu.content = Joined({1}, Counted());
                return bvlc::Broadcast(npdu.Encode());
            case 5:
                return bvlc::ResultOf(static_cast<std::uint16_t>(input.Octet()));
            case 6:
                npdu.content = Joined({0x30, invokeId, service}, Counted());
                return bvlc::Unicast(npdu.Encode());
            default:
                npdu.content = Counted();
                return bvlc::Unicast(npdu.Encode());
        }
    }

    Octets Counted() { return input.Octets(input.Octet()); }

    Input& input;
    Time now{};
    std::optional<Datagram> repeated;
    char invokeId = 0;
    char service = 12;
};

DiscoverySettings Settings(unsigned choices) {
    DiscoverySettings settings;
    settings.way = static_cast<Way>(choices % 3);
    settings.target = Target;
    settings.asksRouters = (choices & 0x10) == 0;
    settings.rounds = 1 + (choices >> 5 & 3);
    settings.timeout = milliseconds(200);
    settings.interval = milliseconds(100);
    settings.spacing = milliseconds(5);
    settings.registrationTimeout = milliseconds(100);
    settings.longest = milliseconds(1000);
    settings.mostDatagrams = 100;
    settings.mostDevices = 6;
    settings.mostNetworks = 5;
    if ((choices & 0x80) != 0) {
        settings.range = InstanceRange{2, 6};
        settings.networks = {9};
    }
    return settings;
}

void CheckQuestion(Datagram const& datagram) {
    auto const distributed = bvlc::DistributedNpdu(datagram.octets);
    auto const message = bvlc::Receive(datagram).message;
    bool const isRegistration = bvlc::RegisteredSeconds(datagram.octets).has_value();
    auto const npdu = distributed ? Npdu::Decode(*distributed)
                      : message   ? Npdu::Decode(message->npdu)
                                  : std::nullopt;
    bool const isQuestion =
        npdu && (npdu->isNetworkMessage ? WhoIsRouterToNetwork::Decode(npdu->content).has_value()
                                        : WhoIs::Decode(npdu->content).has_value());
    Require(isQuestion || isRegistration, "only questions are sent");
}

void CheckResult(DiscoveryResult const& result, DiscoverySettings const& settings) {
    Require(result.devices.size() <= settings.mostDevices, "the devices are bounded");
    for (std::size_t i = 0; i < result.devices.size(); ++i) {
        FoundDevice const& device = result.devices[i];
        Require(device.answers > 0 && device.iAm.device.type == 8, "a device has answered");
        Require(!settings.range || settings.range->Contains(device.Instance()), "within the range");
        if (i > 0) {
            FoundDevice const& before = result.devices[i - 1];
            bool const isLater = before.Instance() == device.Instance()
                                     ? IsBefore(before.peer, device.peer)
                                     : before.Instance() < device.Instance();
            Require(isLater, "the devices are in order, each once");
        }
    }
    std::size_t networks = 0;
    for (FoundRouter const& router : result.routers) {
        Require(std::is_sorted(router.networks.begin(), router.networks.end()), "networks are in order");
        networks += router.networks.size();
    }
    Require(networks <= settings.mostNetworks, "and bounded");
    for (auto const& [instance, devices] : result.RepeatedInstances()) {
        Require(devices.size() > 1 && result.devices.at(devices[0]).Instance() == instance,
                "a repeated instance has several devices");
    }
    for (auto const& devices : result.SharedAddresses()) {
        Require(result.devices.at(devices.at(0)).peer == result.devices.at(devices.at(1)).peer,
                "a shared address is the same");
    }
}

void CheckDiscovery(PlayedLink& link, DiscoverySettings const& settings) {
    Link::Time const begin = link.Now();
    std::size_t const before = link.sent.size();
    DiscoveryResult const result = Discovery(link, settings).Run();
    CheckResult(result, settings);
    Require(link.Now() - begin <= settings.longest + 3 * settings.registrationTimeout + milliseconds(400),
            "the time is bounded");
    std::size_t const perRound = 2 + settings.networks.size() + settings.mostNetworks;
    Require(link.sent.size() - before <= settings.registrationAttempts + settings.rounds * perRound,
            "the questions are bounded");
    std::for_each(link.sent.begin() + static_cast<std::ptrdiff_t>(before), link.sent.end(), CheckQuestion);
}

void CheckObjectList(PlayedLink& link) {
    ClientSettings settings;
    settings.timeout = milliseconds(50);
    settings.retries = 0;
    settings.longestExchange = milliseconds(500);
    settings.mostDatagrams = 20;
    ObjectListSettings listSettings;
    listSettings.mostObjects = 50;
    listSettings.chunk = 8;
    listSettings.attempts = 2;
    Client client(link, settings);
    ObjectListReader reader(client, {Senders[0], std::nullopt}, {8, 7}, listSettings);
    ObjectListResult const result = reader.Read();
    Require(result.objects.size() <= listSettings.mostObjects, "the objects are bounded");
    Require(result.isComplete == result.reason.empty(), "a list is complete or says why not");
    Require(client.RequestCount() <= 1 + listSettings.attempts * (3 * 2 + 3 * listSettings.mostObjects),
            "the requests are bounded");
    std::vector<ObjectId> objects = result.objects;
    std::sort(objects.begin(), objects.end());
    Require(std::adjacent_find(objects.begin(), objects.end()) == objects.end(), "each object is there once");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    DiscoverySettings settings = Settings(input.Octet());
    PlayedLink link(input);
    CheckDiscovery(link, settings);
    link.StopRepeating();
    CheckObjectList(link);
    static Octets const good = test::Hex("81 0A 00 14 01 00 10 00 C4 02 00 00 04 22 05 C4 91 00 21 0F");
    link.Repeat(good);
    settings.way = Way::Broadcast;
    DiscoveryResult const result = Discovery(link, settings).Run();
    Require(result.devices.size() == 1 && result.devices[0].Instance() == 4,
            "a device that answers is found");
    return 0;
}
