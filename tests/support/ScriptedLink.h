#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Hex.h"
#include "Link.h"

namespace test {

constexpr standard::Endpoint DeviceEndpoint{0x0A000001, 47808};
constexpr standard::Endpoint StrangerEndpoint{0x0A000002, 47808};

// A network in virtual time that plays what a test scripts: for each sent datagram, in their order, the
// datagrams that it causes.
class ScriptedLink : public standard::Link {
public:
    using Milliseconds = std::chrono::milliseconds;

    struct Reply {
        Octets octets;
        Milliseconds after{10};
        standard::Endpoint from = DeviceEndpoint;
    };

    // The replies to the next datagram that has none yet.
    ScriptedLink& Then(std::vector<Reply> replies) {
        script.push_back(std::move(replies));
        return *this;
    }

    // A datagram that nothing sent causes.
    void Deliver(Reply const& reply) { arriving.emplace(now + reply.after, Recorded(reply)); }

    void Send(standard::Datagram const& datagram) override {
        RecordDatagram(datagram.octets);
        std::size_t const index = sent.size();
        sent.push_back(datagram);
        if (index < script.size()) {
            for (Reply const& reply : script[index]) {
                Deliver(reply);
            }
        } else {
            OnSend(datagram);
        }
    }

    std::optional<standard::Datagram> Receive(Time deadline) override {
        if (IsStopped()) {
            return std::nullopt;
        }
        if (arriving.empty() || arriving.begin()->first > deadline) {
            now = deadline;
            return std::nullopt;
        }
        auto const next = arriving.begin();
        now = std::max(now, next->first);
        standard::Datagram datagram = next->second;
        arriving.erase(next);
        return datagram;
    }

    Time Now() const override { return now; }
    bool IsStopped() const override { return stopAfter && sent.size() >= stopAfter; }

    Milliseconds Elapsed() const { return std::chrono::duration_cast<Milliseconds>(now.time_since_epoch()); }
    // The APDU of each sent datagram to the local network, in hexadecimal.
    std::vector<std::string> SentApdus() const {
        std::vector<std::string> texts;
        for (standard::Datagram const& datagram : sent) {
            texts.push_back(ToHex(Octets(datagram.octets.begin() + 6, datagram.octets.end())));
        }
        return texts;
    }

    std::vector<standard::Datagram> sent;
    std::size_t stopAfter = 0;  // stops the link once that many datagrams are sent; 0 never

protected:
    // After the end of the script.
    virtual void OnSend(standard::Datagram const&) {}

private:
    static standard::Datagram Recorded(Reply const& reply) {
        RecordDatagram(reply.octets);
        return {reply.from, reply.octets};
    }

    Time now{};
    std::vector<std::vector<Reply>> script;
    std::multimap<Time, standard::Datagram> arriving;
};

// An APDU as a unicast to or from a station of the local network.
inline Octets Local(Octets const& apdu) {
    Octets datagram = {'\x81',
                       '\x0A',
                       static_cast<char>((apdu.size() + 6) >> 8),
                       static_cast<char>((apdu.size() + 6) & 0xFF),
                       '\x01',
                       '\x00'};
    return datagram + apdu;
}

inline ScriptedLink::Reply Reply(std::string_view apdu, int after = 10,
                                 standard::Endpoint const& from = DeviceEndpoint) {
    return {Local(Hex(apdu)), ScriptedLink::Milliseconds(after), from};
}

// A whole datagram.
inline ScriptedLink::Reply Whole(std::string_view datagram, int after = 10,
                                 standard::Endpoint const& from = DeviceEndpoint) {
    return {Hex(datagram), ScriptedLink::Milliseconds(after), from};
}

}  // namespace test
