#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

#include "Hex.h"
#include "dorvelshare/HostEnvironment.h"

namespace test {

// A datagram to the driver, and its delay in milliseconds.
struct LineAnswer {
    Octets datagram;
    long long delay = 0;
};

// A network of many sockets in virtual time, for any number of threads: each socket is a line with its own
// clock, which advances while its owner waits. Sent datagrams are not kept, so runs may have any length.
class LineNetwork final : public dorvel::HostEnvironment {
public:
    // The answers to a datagram on a line. Several threads may call it at once.
    using Responder = std::function<std::vector<LineAnswer>(int line, Octets const& request)>;

    explicit LineNetwork(Responder respond) : responder(std::move(respond)) { dorvel::SetEnvironment(this); }
    ~LineNetwork() override { dorvel::SetEnvironment(nullptr); }
    LineNetwork(LineNetwork const&) = delete;
    LineNetwork& operator=(LineNetwork const&) = delete;

    // From now on at most this number of sockets can be open at the same time.
    void LimitSockets(std::size_t most) { mostSockets = most; }

    std::size_t OpenSockets() const {
        std::lock_guard<std::mutex> const lock(mutex);
        return lines.size();
    }
    // The ports of the open sockets.
    std::set<unsigned short> Ports() const {
        std::lock_guard<std::mutex> const lock(mutex);
        std::set<unsigned short> ports;
        for (auto const& [handle, line] : lines) {
            ports.insert(line.port);
        }
        return ports;
    }
    // The number of datagrams that were sent on each open line.
    std::map<int, unsigned long> Sent() const {
        std::lock_guard<std::mutex> const lock(mutex);
        std::map<int, unsigned long> sent;
        for (auto const& [handle, line] : lines) {
            sent[handle] = line.sent;
        }
        return sent;
    }
    unsigned long TotalSent() const { return totalSent; }
    // Milliseconds for which the owner of the line has waited.
    long long Elapsed(int line) const {
        std::lock_guard<std::mutex> const lock(mutex);
        return lines.at(line).elapsed;
    }

    int Open(unsigned short port) override {
        std::lock_guard<std::mutex> const lock(mutex);
        unsigned short const bound = port != 0 ? port : FreePort();
        if (lines.size() >= mostSockets || !takenPorts.insert(bound).second) {
            return -1;
        }
        int const handle = nextHandle++;
        lines[handle].port = bound;
        return handle;
    }
    unsigned short LocalPort(int handle) override {
        std::lock_guard<std::mutex> const lock(mutex);
        return lines.at(handle).port;
    }
    void Close(int handle) override {
        std::lock_guard<std::mutex> const lock(mutex);
        takenPorts.erase(lines.at(handle).port);
        lines.erase(handle);
    }

    bool Send(int handle, sockaddr_in const& /*peer*/, void const* data, int length) override {
        auto const* first = static_cast<char const*>(data);
        std::vector<LineAnswer> answers = responder(handle, Octets(first, first + length));
        ++totalSent;
        std::lock_guard<std::mutex> const lock(mutex);
        Line& line = lines.at(handle);
        ++line.sent;
        for (LineAnswer& answer : answers) {
            answer.delay += line.elapsed;
            line.arriving.push_back(std::move(answer));
        }
        return true;
    }

    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) override {
        std::lock_guard<std::mutex> const lock(mutex);
        Line& line = lines.at(handle);
        auto const next = std::min_element(
            line.arriving.begin(), line.arriving.end(),
            [](LineAnswer const& left, LineAnswer const& right) { return left.delay < right.delay; });
        if (next == line.arriving.end() || next->delay > line.elapsed + timeout) {
            line.elapsed += timeout;
            return -1;
        }
        line.elapsed = std::max(line.elapsed, next->delay);
        sender = sockaddr_in();
        auto const count = std::min(next->datagram.size(), static_cast<std::size_t>(size));
        std::copy_n(next->datagram.begin(), count, static_cast<char*>(buffer));
        line.arriving.erase(next);
        return static_cast<int>(count);
    }

    // 1 January 2024, 00:00 UTC.
    long long Now() override { return 133485408000000000; }
    long long SteadyNow() override { return Now(); }
    long long LocalTimeDiff() override { return 0; }

private:
    // In the queue an answer's delay is the time of its arrival.
    struct Line {
        unsigned short port = 0;
        unsigned long sent = 0;
        long long elapsed = 0;
        std::deque<LineAnswer> arriving;
    };

    unsigned short FreePort() {
        while (takenPorts.count(nextPort) != 0) {
            ++nextPort;
        }
        return nextPort++;
    }

    Responder const responder;
    mutable std::mutex mutex;
    std::map<int, Line> lines;
    std::set<unsigned short> takenPorts;
    unsigned short nextPort = 50000;
    int nextHandle = 0;
    std::size_t mostSockets = 60000;
    std::atomic<unsigned long> totalSent{0};
};

}  // namespace test
