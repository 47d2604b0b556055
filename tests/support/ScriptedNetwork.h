#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>

#include <algorithm>
#include <cstring>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Hex.h"
#include "dorvelshare/HostEnvironment.h"

namespace test {

// A datagram to the driver, its delay in milliseconds, and the IPv4 address of its sender, 0 for the device
// that got the request.
struct Delivery {
    Octets datagram;
    long long delay = 0;
    unsigned sender = 0;
};

// One step of a dialogue: the expected request, and the answers to it.
class ScriptedExchange {
public:
    explicit ScriptedExchange(bool anyRequest, Octets request)
        : any(anyRequest), expected(std::move(request)) {}

    ScriptedExchange& Answer(Octets datagram, long long delay = 0) {
        deliveries.push_back({std::move(datagram), delay});
        return *this;
    }
    ScriptedExchange& Answer(std::string const& hex, long long delay = 0) { return Answer(Hex(hex), delay); }
    ScriptedExchange& AnswerFrom(unsigned sender, Octets datagram) {
        deliveries.push_back({std::move(datagram), 0, sender});
        return *this;
    }

private:
    friend class ScriptedNetwork;
    bool any;
    Octets expected;
    std::vector<Delivery> deliveries;
};

// A scripted network in virtual time, which replaces the operating system while it exists. Every datagram
// that the host sends must be the next one of the script; once the script is empty, the responder answers.
// Any other datagram fails the test with a message, and so does a script that was not completed. Waiting for
// a datagram advances the clock; nothing sleeps. For one thread.
class ScriptedNetwork final : public dorvel::HostEnvironment {
public:
    struct Sent {
        long long at;  // milliseconds since the beginning
        unsigned short localPort;
        sockaddr_in peer;
        Octets datagram;
    };
    // Answers a request.
    using Responder = std::function<std::vector<Delivery>(Octets const& request)>;

    // The clock at the beginning: 1 January 2024, 00:00 UTC, as a file time.
    static constexpr long long Start = 133485408000000000;
    static constexpr long long UnitsPerMillisecond = 10000;

    ScriptedNetwork() { dorvel::SetEnvironment(this); }
    ~ScriptedNetwork() override {
        dorvel::SetEnvironment(nullptr);
        if (!script.empty()) {
            ADD_FAILURE() << script.size() << " exchanges of the script are missing, the next one: "
                          << ToHex(script.front().expected);
        }
    }
    ScriptedNetwork(ScriptedNetwork const&) = delete;
    ScriptedNetwork& operator=(ScriptedNetwork const&) = delete;

    // Adds an exchange to the script. Without an Answer the device stays silent.
    ScriptedExchange& Expect(Octets request) { return script.emplace_back(false, std::move(request)); }
    ScriptedExchange& Expect(std::string const& hex) { return Expect(Hex(hex)); }
    ScriptedExchange& ExpectAny() { return script.emplace_back(true, Octets()); }
    // Sets the responder for all requests after the script.
    void Respond(Responder afterScript) { responder = std::move(afterScript); }
    // Delivers an unsolicited datagram.
    void Deliver(Octets datagram, long long delay = 0) { Enqueue({std::move(datagram), delay}); }

    std::vector<Sent> const& SentDatagrams() const { return sent; }
    // Milliseconds since the beginning.
    long long Elapsed() const { return elapsed; }
    bool IsOpen(int handle) const { return ports.count(handle) != 0; }
    int OpenSockets() const { return static_cast<int>(ports.size()); }

    void TakePort(unsigned short port) { takenPorts.insert(port); }
    void SetLocalTimeDiff(long long units) { localTimeDiff = units; }
    // From now on sending, or opening a socket, fails.
    void RefuseToSend() { refusesToSend = true; }
    void RefuseToOpen(bool refuses = true) { refusesToOpen = refuses; }
    // Sets the port of the next socket that is opened without one.
    void OfferPort(unsigned short port) { nextFreePort = port; }
    // Lets time pass.
    void Pass(long long milliseconds) { elapsed += milliseconds; }

    int Open(unsigned short port) override {
        while (takenPorts.count(nextFreePort) != 0) {
            ++nextFreePort;
        }
        unsigned short const bound = port != 0 ? port : nextFreePort++;
        if (refusesToOpen || !takenPorts.insert(bound).second) {
            return -1;
        }
        ports[nextHandle] = bound;
        return nextHandle++;
    }
    unsigned short LocalPort(int handle) override { return ports.at(handle); }
    void Close(int handle) override {
        takenPorts.erase(ports.at(handle));
        ports.erase(handle);
    }

    bool Send(int handle, sockaddr_in const& peer, void const* data, int length) override {
        if (refusesToSend) {
            return false;
        }
        auto const* first = static_cast<char const*>(data);
        sent.push_back({elapsed, ports.at(handle), peer, Octets(first, first + length)});
        RecordDatagram(sent.back().datagram);
        for (Delivery& delivery : AnswersTo(sent.back().datagram)) {
            Enqueue(std::move(delivery));
        }
        return true;
    }

    int Receive(int /*handle*/, sockaddr_in& sender, void* buffer, int size, int timeout) override {
        auto const next = std::min_element(
            arriving.begin(), arriving.end(),
            [](Delivery const& left, Delivery const& right) { return left.delay < right.delay; });
        if (next == arriving.end() || next->delay > elapsed + timeout) {
            elapsed += timeout;
            return -1;
        }
        elapsed = std::max(elapsed, next->delay);
        auto const count = std::min<std::size_t>(next->datagram.size(), static_cast<std::size_t>(size));
        std::copy_n(next->datagram.begin(), count, static_cast<char*>(buffer));
        sender = sent.empty() ? sockaddr_in() : sent.back().peer;
        if (next->sender != 0) {
            sender.sin_addr.s_addr = htonl(next->sender);
        }
        arriving.erase(next);
        return static_cast<int>(count);
    }

    long long Now() override { return Start + elapsed * UnitsPerMillisecond; }
    long long SteadyNow() override { return Now(); }
    long long LocalTimeDiff() override { return localTimeDiff; }

private:
    std::vector<Delivery> AnswersTo(Octets const& request) {
        if (script.empty()) {
            if (responder) {
                return responder(request);
            }
            ADD_FAILURE() << "unexpected datagram: " << ToHex(request);
            return {};
        }
        ScriptedExchange exchange = std::move(script.front());
        script.pop_front();
        if (!exchange.any && exchange.expected != request) {
            ADD_FAILURE() << "expected: " << ToHex(exchange.expected) << "\n    sent: " << ToHex(request);
        }
        return std::move(exchange.deliveries);
    }

    // In the queue a delivery's delay is the time of its arrival.
    void Enqueue(Delivery delivery) {
        RecordDatagram(delivery.datagram);
        delivery.delay += elapsed;
        arriving.push_back(std::move(delivery));
    }

    std::deque<ScriptedExchange> script;
    Responder responder;
    std::deque<Delivery> arriving;
    std::vector<Sent> sent;
    std::map<int, unsigned short> ports;
    std::set<unsigned short> takenPorts;
    unsigned short nextFreePort = 50000;
    int nextHandle = 3;
    long long elapsed = 0;
    long long localTimeDiff = 0;
    bool refusesToSend = false;
    bool refusesToOpen = false;
};

}  // namespace test
