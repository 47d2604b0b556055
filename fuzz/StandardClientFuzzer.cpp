// The client by the standard on a network that the input plays. For every input: a read ends within its
// bounds of time and datagrams, each requested property has a result, only reads are sent, and afterwards a
// good answer is read.
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "Bvlc.h"
#include "Client.h"
#include "Hex.h"
#include "Input.h"
#include "Npdu.h"
#include "Require.h"

using namespace standard;
using fuzz::Input;
using fuzz::Require;
using std::chrono::milliseconds;
using test::Hex;

namespace {

constexpr int MostRounds = 4;

Endpoint const Router{0x0A000001, 47808};
Endpoint const Stranger{0x0A000002, 47808};
NetworkAddress const Remote{5, {'\x0B'}};

std::vector<PropertyReference> const References{
    {{0, 5}, 85, {}}, {{0, 5}, 111, {}}, {{8, 7}, 76, 1}, {{45, 1}, 85, {}}};

ClientSettings Settings() {
    ClientSettings settings;
    settings.timeout = milliseconds(100);
    settings.segmentTimeout = milliseconds(50);
    settings.longestExchange = milliseconds(1000);
    settings.retries = 1;
    settings.longestAnswer = 2000;
    settings.mostDatagrams = 40;
    settings.windowSize = 4;
    return settings;
}

// Plays the input. Each delivery begins with a control octet: bits 0 to 2 its kind (0: nothing until the
// deadline), 3 to 5 the time before it, 6 a stranger sends it, 7 it is delivered for ever.
class PlayedLink : public Link {
public:
    PlayedLink(Input& played, bool isRouted) : input(played), hasRouter(isRouted) {}

    void Send(Datagram const& datagram) override {
        auto const message = bvlc::Receive(datagram).message;
        auto const npdu = message ? Npdu::Decode(message->npdu) : std::nullopt;
        Require(npdu && npdu->content.size() >= 3, "the client sends NPDUs");
        unsigned const type = OctetValue(npdu->content[0]) >> 4;
        Require(type == 0 || type == 4 || type == 7, "they are requests, SegmentACKs and Aborts");
        if (type == 0) {
            invokeId = npdu->content[2];
            service = npdu->content.at(3);
            Require(service == 12 || service == 14, "its requests read");
        }
        ++sent;
    }

    std::optional<Datagram> Receive(Time deadline) override {
        unsigned const control = repeated || input.IsEmpty() ? 0 : input.Octet();
        if (repeated || (control & 7) != 0) {
            now += milliseconds(repeated ? 1 : 10 * (control >> 3 & 7));
        } else {
            now = std::max(now, deadline);
            return std::nullopt;
        }
        if (repeated) {
            return repeated;
        }
        Datagram const datagram{(control & 0x40) != 0 ? Stranger : Router, Delivered(control & 7)};
        if ((control & 0x80) != 0) {
            repeated = datagram;
        }
        return datagram;
    }

    Time Now() const override { return now; }

    void StopRepeating() { repeated.reset(); }
    // From now on every datagram is the ack with these parameters to a ReadProperty with that invoke id.
    void RepeatAck(unsigned id, Octets const& content) {
        invokeId = static_cast<char>(id);
        service = 12;
        repeated = Datagram{Router, Framed(Ack(content))};
    }

    std::size_t sent = 0;

private:
    Octets Delivered(unsigned kind) {
        switch (kind) {
            case 1:
                return Counted();
            case 2:
                return Framed(Counted());
            case 3:
                return Framed(Ack(Counted()));
            case 4:
                return Framed(Segment(sequence++, 4));
            case 5:
                return Framed(Segment(input.Octet(), input.Octet()));
            case 6:
                return Framed(
                    Joined({static_cast<char>(0x20 + (input.Octet() & 0x7F)), invokeId}, Counted()));
            default:
                sequence = 0;
                return Framed(Joined({0x50, invokeId, service}, Counted()));
        }
    }

    Octets Segment(unsigned number, unsigned window) {
        Octets const head{static_cast<char>(0x38 | (input.Octet() & 4)), invokeId, static_cast<char>(number),
                          static_cast<char>(window), service};
        return Joined(head, Counted());
    }

    Octets Ack(Octets const& content) const { return Joined({0x30, invokeId, service}, content); }

    Octets Counted() { return input.Octets(input.Octet()); }

    static Octets Joined(Octets left, Octets const& right) {
        left.insert(left.end(), right.begin(), right.end());
        return left;
    }

    Octets Framed(Octets const& apdu) const {
        Npdu npdu;
        npdu.content = apdu;
        if (hasRouter) {
            npdu.source = Remote;
        }
        return bvlc::Unicast(npdu.Encode());
    }

    Input& input;
    bool const hasRouter;
    Time now{};
    std::optional<Datagram> repeated;
    char service = 12;
    char invokeId = 0;
    unsigned sequence = 0;
};

void CheckResults(std::vector<ReadResult> const& results) {
    Require(results.size() == References.size(), "each property has a result");
    for (std::size_t i = 0; i < results.size(); ++i) {
        Require(results[i].reference == References[i], "in the order of the request");
        Require(!results[i].failure || results[i].values.empty(), "which is values or a failure");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    bool const isRouted = (input.Octet() & 1) != 0;
    PlayedLink link(input, isRouted);
    Peer const device{Router, isRouted ? std::optional(Remote) : std::nullopt};
    ClientSettings const settings = Settings();
    Client client(link, settings);
    for (int round = 0; round < MostRounds && !input.IsEmpty(); ++round) {
        link.StopRepeating();
        Link::Time const begin = link.Now();
        std::size_t const before = client.RequestCount();
        std::size_t const sentBefore = link.sent;
        CheckResults(client.ReadMultiple(device, References));
        std::size_t const requests = client.RequestCount() - before;
        Require(requests >= 1 && requests <= 3 * References.size(), "the number of requests is bounded");
        Require(link.Now() - begin <= requests * (settings.longestExchange + milliseconds(100)),
                "their time is bounded");
        Require(link.sent - sentBefore <= requests * (settings.mostDatagrams + settings.retries + 2),
                "what the client sends is bounded");
    }
    static Octets const good = Hex("0C 00 00 00 05 19 55 3E 44 42 90 00 00 3F");
    link.RepeatAck(static_cast<unsigned>(client.RequestCount() + 1), good);
    ReadResult const result = client.Read(device, References[0]);
    Require(!result.failure && result.values.at(0).real == 72.0, "a good answer is read afterwards");
    return 0;
}
